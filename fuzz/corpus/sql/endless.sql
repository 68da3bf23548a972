while 1 = 1 select count(*) from t a, t b, t c
