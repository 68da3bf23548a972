declare @v table (a int identity, b varchar(5) default 'q') insert @v (b) values ('p'), (default) select v.a, b from @v v create table #x (a int primary key) insert #x select id from t
GO
select * from #x drop table #x
