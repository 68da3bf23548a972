select left(name, 1) x, count(*) n, sum(amount), avg(d), max(day) from t group by left(name, 1) having count(*) > 0 order by x desc
