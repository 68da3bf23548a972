set xact_abort on begin tran begin tran insert t (name) values ('x') commit rollback begin transaction a update t set d = 2 create table #x (a int) commit work select @@trancount, @@error
