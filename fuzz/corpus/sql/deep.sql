select ((((((((((((((((((((((((((((((((((((((((case when not 1 = 1 then (select max(id) from t where id > any (select 1)) end))))))))))))))))))))))))))))))))))))))))
