declare @b bigint set @b = -9223372036854775807 set @b = @b - 1 select @b % -1
GO
select cast('-9223372036854775808' as bigint) / -1
GO
select abs(cast('-9223372036854775808' as bigint))
GO
select (-cast('-9223372036854775808' as bigint)) / 2
GO
select round(cast('9223372036854775807' as bigint), -1), abs(getdate())
GO
select cast('20080401' as datetime) + 1e300, cast(1e300 as datetime)
