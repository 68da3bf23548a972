select a.id, b.id from t a left join t b on b.id = a.id + 1 right join (select 2 k) c on 1 = 1 cross join u where a.name like 'o[^a-d]%' escape '!' or exists (select 1 from u where a = b.id)
