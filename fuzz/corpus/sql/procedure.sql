declare @r int, @o int exec @r = p @c = @o output, @a = 4 exec d.dbo.p 1, default, @o out select @r, @o
GO
create proc q (@a int) as if @a > 0 begin set @a = @a - 1 exec q @a end return @a
GO
q 3
