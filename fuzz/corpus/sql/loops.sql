declare @i int, @s varchar(20) select @i = 0, @s = '' while 1 = 1 begin set @i = @i + 1 if @i = 2 continue else if @i > 4 break; set @s = @s + cast(@i as char(1)) end print @s
