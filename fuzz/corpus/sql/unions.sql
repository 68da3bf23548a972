select distinct top 1 id from t union all select 2.5 union select null order by 1
GO
declare @n int set @n = 1 select top (@n) id from t with (nolock)
