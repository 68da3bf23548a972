#pragma once

#include "db/Connection.h"

/// Makes NorvaScheduler with the tables that templates live in.
inline void createTemplateTables(Connection& connection) {
    connection.run(sql("CREATE DATABASE NorvaScheduler"));
    connection.run(
        sql("CREATE TABLE NorvaScheduler.dbo.tblTemplate (TemplateID int IDENTITY(1,1) PRIMARY KEY, "
            "Title nvarchar(100) NULL, UnitabAccount varchar(50) NULL, BillType int NULL, CSVDefs bit NULL, "
            "DefaultDates bit NULL, TemplateType int NULL, SubType smallint NULL, SubCCLevel smallint NULL, "
            "SubCCSendEmail bit NULL)"));
    connection.run(sql(
        "CREATE TABLE NorvaScheduler.dbo.tblTemplate_Report (ReportID int IDENTITY(1,1) PRIMARY KEY, "
        "TemplateID int NULL, ReportType int NULL, ReportSubType int NULL, OutputExcel bit NULL, "
        "OutputCSV bit NULL, EmailFiles bit NULL, Day1 bit NULL, Day2 bit NULL, Day3 bit NULL, "
        "Day4 bit NULL, Day5 bit NULL, Day6 bit NULL, Day7 bit NULL, DateStart datetime NULL, "
        "DateEnd datetime NULL, TimeStart varchar(30) NULL, TimeEnd varchar(30) NULL, Overnight bit NULL, "
        "CostStart varchar(20) NULL, CostEnd varchar(20) NULL, DurationStart varchar(20) NULL, "
        "DurationEnd varchar(20) NULL, AccountFilter int NULL, CallFilter int NULL, "
        "ServiceNo nvarchar(50) NULL, SourceBillRef nvarchar(50) NULL, CC1 nvarchar(30) NULL, "
        "CC2 nvarchar(30) NULL, CC3 nvarchar(30) NULL, CC4 nvarchar(30) NULL, CC5 nvarchar(30) NULL, "
        "CallsToNumber nvarchar(max) NULL, LinkvaleBillNumber nvarchar(50) NULL, "
        "CircuitPercentage varchar(10) NULL, ReportCaption nvarchar(50) NULL, "
        "ReportHeader nvarchar(200) NULL, Tagging int NULL, UserId varchar(30) NULL, "
        "CallClassParams varchar(2000) NULL, LineSelection varchar(100) NULL, "
        "CostCentreLevel smallint NULL, BillIds varchar(200) NULL)"));
    for (int band = 1; band <= 23; ++band)
        connection.run(sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD {} bit NULL",
                           Name(QString("Distance%1").arg(band))));
    connection.run(sql("CREATE TABLE NorvaScheduler.dbo.tblCCSubProject_CCs (TemplateID int NULL, CCName "
                       "nvarchar(30) NULL)"));
    connection.run(
        sql("CREATE TABLE NorvaScheduler.dbo.TblExcludedNumbers (ID int IDENTITY(1,1) PRIMARY KEY, "
            "TemplateID int NOT NULL, TelNo varchar(25) NULL, Include bit DEFAULT 0)"));
}
