-- The tables of the scheduler database. Run once, in batches, in the new, empty database.
CREATE TABLE [dbo].[tblTemplate] (
    [TemplateID] [int] IDENTITY (1, 1) NOT NULL CONSTRAINT [PK_tblTemplate] PRIMARY KEY,
    [Title] [nvarchar] (100) COLLATE Latin1_General_CI_AS NOT NULL,
    [UnitabAccount] [varchar] (50) COLLATE Latin1_General_CI_AS NULL,
    [BillType] [int] NOT NULL DEFAULT 0,
    [CSVDefs] [bit] NOT NULL DEFAULT 0,
    [DefaultDates] [bit] NOT NULL DEFAULT 0,
    [TemplateType] [int] NOT NULL DEFAULT 0,
    [SubType] [smallint] NOT NULL DEFAULT 0,
    [SubCCLevel] [smallint] NOT NULL DEFAULT 1,
    [SubCCSendEmail] [bit] NOT NULL DEFAULT 0
) ON [PRIMARY]
GO
CREATE INDEX [IX_tblTemplate_Account] ON [dbo].[tblTemplate] ([UnitabAccount], [Title])
GO
CREATE TABLE [dbo].[tblTemplate_Report] (
    [ReportID] [int] IDENTITY (1, 1) NOT NULL CONSTRAINT [PK_tblTemplate_Report] PRIMARY KEY,
    [TemplateID] [int] NOT NULL,
    [ReportType] [int] NOT NULL,
    [ReportSubType] [int] NOT NULL,
    [OutputExcel] [bit] NOT NULL DEFAULT 0,
    [OutputCSV] [bit] NOT NULL DEFAULT 0,
    [EmailFiles] [bit] NOT NULL DEFAULT 0,
    [Day1] [bit] NOT NULL DEFAULT 1,
    [Day2] [bit] NOT NULL DEFAULT 1,
    [Day3] [bit] NOT NULL DEFAULT 1,
    [Day4] [bit] NOT NULL DEFAULT 1,
    [Day5] [bit] NOT NULL DEFAULT 1,
    [Day6] [bit] NOT NULL DEFAULT 1,
    [Day7] [bit] NOT NULL DEFAULT 1,
    [DateStart] [datetime] NULL,
    [DateEnd] [datetime] NULL,
    [TimeStart] [varchar] (8) COLLATE Latin1_General_CI_AS NULL,
    [TimeEnd] [varchar] (8) COLLATE Latin1_General_CI_AS NULL,
    [Overnight] [bit] NOT NULL DEFAULT 0,
    [Distance1] [bit] NOT NULL DEFAULT 0,
    [Distance2] [bit] NOT NULL DEFAULT 0,
    [Distance3] [bit] NOT NULL DEFAULT 0,
    [Distance4] [bit] NOT NULL DEFAULT 0,
    [Distance5] [bit] NOT NULL DEFAULT 0,
    [Distance6] [bit] NOT NULL DEFAULT 0,
    [Distance7] [bit] NOT NULL DEFAULT 0,
    [Distance8] [bit] NOT NULL DEFAULT 0,
    [Distance9] [bit] NOT NULL DEFAULT 0,
    [Distance10] [bit] NOT NULL DEFAULT 0,
    [Distance11] [bit] NOT NULL DEFAULT 0,
    [Distance12] [bit] NOT NULL DEFAULT 0,
    [Distance13] [bit] NOT NULL DEFAULT 0,
    [Distance14] [bit] NOT NULL DEFAULT 0,
    [Distance15] [bit] NULL,
    [Distance16] [bit] NULL,
    [Distance17] [bit] NULL,
    [Distance18] [bit] NOT NULL DEFAULT 0,
    [Distance19] [bit] NOT NULL DEFAULT 0,
    [Distance20] [bit] NOT NULL DEFAULT 0,
    [Distance21] [bit] NOT NULL DEFAULT 0,
    [Distance22] [bit] NOT NULL DEFAULT 0,
    [Distance23] [bit] NOT NULL DEFAULT 0,
    [CostStart] [varchar] (20) COLLATE Latin1_General_CI_AS NULL,
    [CostEnd] [varchar] (20) COLLATE Latin1_General_CI_AS NULL,
    [DurationStart] [varchar] (20) COLLATE Latin1_General_CI_AS NULL,
    [DurationEnd] [varchar] (20) COLLATE Latin1_General_CI_AS NULL,
    [AccountFilter] [int] NOT NULL DEFAULT 2,
    [CallFilter] [int] NOT NULL DEFAULT 0,
    [ServiceNo] [nvarchar] (50) COLLATE Latin1_General_CI_AS NULL,
    [SourceBillRef] [nvarchar] (50) COLLATE Latin1_General_CI_AS NULL,
    [CC1] [nvarchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [CC2] [nvarchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [CC3] [nvarchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [CC4] [nvarchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [CC5] [nvarchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [CallsToNumber] [nvarchar] (max) COLLATE Latin1_General_CI_AS NULL,
    [LinkvaleBillNumber] [nvarchar] (50) COLLATE Latin1_General_CI_AS NULL,
    [CircuitPercentage] [varchar] (10) COLLATE Latin1_General_CI_AS NULL,
    [ReportCaption] [nvarchar] (50) COLLATE Latin1_General_CI_AS NULL,
    [ReportHeader] [nvarchar] (200) COLLATE Latin1_General_CI_AS NULL,
    [Tagging] [int] NOT NULL DEFAULT 0,
    [UserId] [varchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [CallClassParams] [varchar] (2000) COLLATE Latin1_General_CI_AS NULL,
    [LineSelection] [varchar] (100) COLLATE Latin1_General_CI_AS NULL,
    [CostCentreLevel] [smallint] DEFAULT 1,
    [BillIds] [varchar] (200) COLLATE Latin1_General_CI_AS NULL
) ON [PRIMARY]
GO
CREATE INDEX [IX_tblTemplate_Report_Template] ON [dbo].[tblTemplate_Report] ([TemplateID])
GO
CREATE TABLE [dbo].[tblCCSubProject_CCs] (
    [TemplateID] [int] NOT NULL,
    [CCName] [nvarchar] (30) COLLATE Latin1_General_CI_AS NULL
) ON [PRIMARY]
GO
CREATE INDEX [IX_tblCCSubProject_CCs_Template] ON [dbo].[tblCCSubProject_CCs] ([TemplateID])
GO
CREATE TABLE [dbo].[tblSchedule] (
    [ScheduleID] [int] IDENTITY (1, 1) NOT NULL CONSTRAINT [PK_tblSchedule] PRIMARY KEY,
    [ScheduleTitle] [nvarchar] (100) COLLATE Latin1_General_CI_AS NOT NULL,
    [TemplateID] [int] NOT NULL,
    [ProjectRef] [nvarchar] (128) COLLATE Latin1_General_CI_AS NULL,
    [RunDate] [varchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [Status] [int] NOT NULL DEFAULT 0,
    [RanDate] [varchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [Username] [nvarchar] (50) COLLATE Latin1_General_CI_AS NULL
) ON [PRIMARY]
GO
CREATE INDEX [IX_tblSchedule_User] ON [dbo].[tblSchedule] ([Username])
GO
CREATE INDEX [IX_tblSchedule_Template] ON [dbo].[tblSchedule] ([TemplateID], [Status])
GO
CREATE INDEX [IX_tblSchedule_Title] ON [dbo].[tblSchedule] ([ScheduleTitle])
GO
CREATE TABLE [dbo].[tblLogs] (
    [LogID] [int] IDENTITY (1, 1) NOT NULL CONSTRAINT [PK_tblLogs] PRIMARY KEY,
    [ScheduleID] [int] NOT NULL,
    [ReportID] [int] NOT NULL,
    [ErrorCode] [int] NOT NULL,
    [ErrorDescription] [nvarchar] (2000) COLLATE Latin1_General_CI_AS NULL,
    [ReportName] [nvarchar] (200) COLLATE Latin1_General_CI_AS NULL
) ON [PRIMARY]
GO
CREATE INDEX [IX_tblLogs_Schedule] ON [dbo].[tblLogs] ([ScheduleID])
GO
CREATE TABLE [dbo].[tblMailAddresses] (
    [BillAccount] [nvarchar] (50) COLLATE Latin1_General_CI_AS NULL,
    [CostCentre] [nvarchar] (30) COLLATE Latin1_General_CI_AS NULL,
    [EmailAddress] [nvarchar] (254) COLLATE Latin1_General_CI_AS NULL,
    [CCLevel] [varchar] (10) COLLATE Latin1_General_CI_AS NULL
) ON [PRIMARY]
GO
-- A login in the same moment may have made this one already.
IF NOT EXISTS (SELECT * FROM sysobjects WHERE [name] = 'TblExcludedNumbers')
CREATE TABLE [dbo].[TblExcludedNumbers] (
    [ID] [int] IDENTITY(1,1) PRIMARY KEY,
    [TemplateID] [int] NOT NULL,
    [TelNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL,
    [Include] [bit] DEFAULT 0
) ON [PRIMARY]
GO
CREATE INDEX [IX_TblExcludedNumbers_Template] ON [dbo].[TblExcludedNumbers] ([TemplateID], [TelNo])
GO
CREATE TABLE [dbo].[tblOptions] (
    [OutputPath] [nvarchar] (260) COLLATE Latin1_General_CI_AS NULL,
    [Excel] [bit] NOT NULL DEFAULT 0,
    [CSV] [bit] NOT NULL DEFAULT 0,
    [DefaultEmail] [varchar] (254) COLLATE Latin1_General_CI_AS NULL,
    [MaxFileSize] [int] NULL
) ON [PRIMARY]
GO
