declare @c int exec sp_executesql N'use master select @c = @p + count(*) from d.dbo.t', N'@p int, @c int output', 10, @c = @c output exec('select ''' + 'x' + '''') select @c, db_name()
