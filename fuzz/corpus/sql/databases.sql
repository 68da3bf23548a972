create database e use e create table x (a int) use d select * from e..x alter database e set recovery simple drop database e
