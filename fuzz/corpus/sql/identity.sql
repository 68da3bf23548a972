set identity_insert t on insert t (id, name) values (50, 'x') set identity_insert t off insert t default values select max(id) from t
