#include "embedded/Collation.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"
#include "embedded/Parser.h"
#include "embedded/SystemProcedures.h"

namespace embedded {

namespace {

const Type integerType = Type::of(Type::Int);
const Type nameType = Type::text(128, true);

/// The object a text names, in its database or the current one; null when there is none.
const Object* objectNamed(const Session& session, const QString& text) {
    try {
        return session.find(parseObjectName(text));
    } catch (const DbError&) {
        return nullptr; // a text that is no name, or names a database out of reach, names nothing
    }
}

Value objectId(const Session& session, const Arguments& a) {
    const Object* object = objectNamed(session, a.text(0));
    if (!object) return {};
    if (a.count() > 1 && !collation::equal(QString(typeCodes).mid(2 * int(object->kind), 2), a.text(1)))
        return {};
    return object->id;
}

Value objectProperty(const Session& session, const Arguments& a) {
    const Object* object = session.catalog.object(a.integer(0));
    if (!object || object->database != session.database) return {};
    const QString property = a.text(1).toLower();
    const auto isKind = [object](ObjectKind kind) { return Value(qint64(object->kind == kind)); };
    if (property == "isusertable" || property == "istable") return isKind(ObjectKind::Table);
    if (property == "isprocedure") return isKind(ObjectKind::Procedure);
    if (property == "tablehasidentity") return qint64(object->identityColumn() != nullptr);
    throw notSupported("OBJECTPROPERTY " + a.text(1));
}

Value columnLength(const Session& session, const Arguments& a) {
    const Object* table = objectNamed(session, a.text(0));
    const Column* column = table ? table->column(a.text(1)) : nullptr;
    return column ? Value(qint64(column->type.storageLength())) : Value();
}

Value databaseId(const Session& session, const Arguments& a) {
    if (a.count() == 0) return session.database;
    const Database* database = session.catalog.database(a.text(0));
    return database ? Value(database->id) : Value();
}

Value databaseName(const Session& session, const Arguments& a) {
    const qint64 id = a.count() == 0 ? session.database : a.integer(0);
    const auto database = session.catalog.databases().constFind(id);
    return database == session.catalog.databases().constEnd() ? Value() : Value(database->name);
}

Value serverProperty(Session& session, const Arguments& a) {
    const QString property = a.text(0).toLower();
    if (property == "instancename") return {}; // the default instance has none
    if (property == "servername" || property == "machinename") return session.valueOf("@@servername");
    if (property == "collation") return QString("Latin1_General_CI_AS");
    if (property == "edition") return QString("Embedded");
    if (property == "productversion") return QString("10.0.0.0");
    if (property == "productlevel") return QString("RTM");
    const QString key = "SOFTWARE\\Microsoft\\MSSQLServer\\MSSQLServer";
    if (property == "instancedefaultdatapath")
        return registryValue(session.file, "HKEY_LOCAL_MACHINE", key, "DefaultData");
    if (property == "instancedefaultlogpath")
        return registryValue(session.file, "HKEY_LOCAL_MACHINE", key, "DefaultLog");
    throw notSupported("SERVERPROPERTY " + a.text(0));
}

/// The error that the innermost CATCH block handles; null outside of one.
const DbError* handledError(const Session& session) {
    for (auto frame = session.frames.rbegin(); frame != session.frames.rend(); ++frame)
        if (frame->error) return &*frame->error;
    return nullptr;
}

Value errorNumber(const Session& session, const Arguments&) {
    const DbError* error = handledError(session);
    return error ? Value(qint64(error->number())) : Value();
}

Value errorMessage(const Session& session, const Arguments&) {
    const DbError* error = handledError(session);
    return error ? Value(error->text()) : Value();
}

Value hasAccess(const Session& session, const Arguments& a) {
    const Database* database = session.catalog.database(a.text(0));
    return database ? Value(qint64(session.canEnter(*database))) : Value();
}

} // namespace

void addServerFunctions(FunctionTable& table, Session& session) {
    const auto add = [&](const char* name, const char* arguments, const Type& type, auto function) {
        table.add(name, {arguments, always(type),
                         [&session, function](const Arguments& a) { return function(session, a); }});
    };
    add("object_id", "t[t", integerType, objectId);
    add("objectproperty", "it", integerType, objectProperty);
    add("col_length", "tt", integerType, columnLength);
    add("db_id", "[t", integerType, databaseId);
    add("db_name", "[i", nameType, databaseName);
    add("has_dbaccess", "t", integerType, hasAccess);
    add("serverproperty", "t", nameType, serverProperty);
    add("error_number", "", integerType, errorNumber);
    add("error_message", "", Type::text(4000, true), errorMessage);
    add("scope_identity", "", Type::decimal(38, 0),
        [](const Session& own, const Arguments&) { return own.identity; });
    add("suser_sname", "", nameType, [](const Session& own, const Arguments&) { return own.login; });
}

} // namespace embedded
