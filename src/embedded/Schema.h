#pragma once

#include "embedded/Type.h"

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

struct Column {
    QString name;
    Type type;
    bool nullable = true;
    bool identity = false;
    QString defaultText; ///< as written
    qint64 seed = 1;     ///< of an identity column that is being made
};

/// The column of that name; null when there is none.
const Column* columnNamed(const QList<Column>& columns, const QString& name);

} // namespace embedded
