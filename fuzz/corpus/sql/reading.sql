select t.name, dbo.t.id, d.dbo.t.id from d..t where d.dbo.[t].[id] = 2 order by 1 desc
