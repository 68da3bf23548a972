set quoted_identifier off
GO
select "it's", [name] from t -- "x
/* one /* two */ ' */
GO
set quoted_identifier on select "name" as "a""b" from "t"
