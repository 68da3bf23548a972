-- Options of the scheduler database: small, always open, recoverable from a plain backup. They are
-- preferences: a kind of server that lacks one of them goes without it.
DECLARE @option nvarchar(100)
DECLARE @options TABLE ([Id] int IDENTITY(1,1), [Setting] nvarchar(100))
INSERT INTO @options ([Setting]) VALUES
    (N'RECOVERY SIMPLE'), (N'AUTO_CLOSE OFF'), (N'AUTO_SHRINK OFF'), (N'PAGE_VERIFY CHECKSUM'),
    (N'AUTO_CREATE_STATISTICS ON'), (N'AUTO_UPDATE_STATISTICS ON')
DECLARE @id int
SET @id = 1
WHILE EXISTS (SELECT * FROM @options WHERE [Id] = @id)
BEGIN
    SELECT @option = N'ALTER DATABASE [NorvaScheduler] SET ' + [Setting] FROM @options WHERE [Id] = @id
    BEGIN TRY
        EXEC (@option)
    END TRY
    BEGIN CATCH
        PRINT @option + N' is not available here'
    END CATCH
    SET @id = @id + 1
END
