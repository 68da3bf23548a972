#pragma once

#include <QString>

/// Knows the application's folders and keeps them in "Paths.txt" beside the application. Folders are
/// held without a trailing separator.
class cPathControl {
public:
    /// All folders under `appFolder` until "Paths.txt" there, read at once, says otherwise.
    explicit cPathControl(const QString& appFolder);

    const QString& AppFolder() const { return m_appFolder; }
    const QString& ProjectFolder() const { return m_projectFolder; }
    const QString& BackupFolder() const { return m_backupFolder; }
    const QString& SystemFolder() const { return m_systemFolder; }
    void setSystemFolder(const QString& folder);
    /// The full path of a file beside the application.
    QString appFile(const QString& name) const;

    /// Writes the four folders as `Key=Value` lines; false when the file cannot be written.
    bool SavePathSettingsFile() const;
    /// Whether a file can be created in the application folder.
    bool CanWriteToNorvaQXAppPath() const;
    /// Copies the analysis product's working files and its Log and Archives sub-folders; files that
    /// are there already are replaced. Returns how many files could not be copied.
    int CopyFilesAndFolders(const QString& from, const QString& to) const;

private:
    void readPathSettingsFile();

    QString m_appFolder;
    QString m_projectFolder;
    QString m_backupFolder;
    QString m_systemFolder;
};

/// The machine's common application-data folder followed by "Zelvan/System".
QString commonSystemFolder();
