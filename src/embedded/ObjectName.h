#pragma once

#include <QString>

namespace embedded {

/// What a database holds. Server files store the numbers; views, foreign keys and checks are only in those
/// of earlier builds.
enum class ObjectKind { Table, View, Procedure, PrimaryKey, Unique, ForeignKey, Check, Default, Index };

/// A name of up to three parts, each possibly empty: database..table has an empty schema.
struct ObjectName {
    QString database;
    QString schema;
    QString name;
    QString toString() const;
};

} // namespace embedded
