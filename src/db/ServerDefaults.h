#pragma once

#include <QString>

class Connection;

/// Where the server keeps the files of a new database; folders end in a separator, or are empty when
/// the server does not say.
struct ServerDefaults {
    QString dataFolder;
    QString logFolder;
    QString dataExtension = ".dbf";
    QString logExtension = ".lbf";
    QString problem; ///< why the registry could not be asked; empty when it could
};

/// Takes the defaults from "DefaultPaths.ini" in the folder when it is there, else asks the server
/// through the procedure spGetDefaults, which is made anew in the default database, and where the
/// registry is silent through the server's properties.
ServerDefaults readServerDefaults(Connection& connection, const QString& appFolder);
