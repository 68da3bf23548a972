begin try select 1/0 end try begin catch select error_number(), error_message() begin try exec('select * from none') end try begin catch print error_message() end catch end catch
