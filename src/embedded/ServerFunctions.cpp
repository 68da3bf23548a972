#include "embedded/Collation.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"
#include "embedded/Parser.h"
#include "embedded/Registry.h"

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
        return registry::read(session.file, "HKEY_LOCAL_MACHINE", key, "DefaultData");
    if (property == "instancedefaultlogpath")
        return registry::read(session.file, "HKEY_LOCAL_MACHINE", key, "DefaultLog");
    throw notSupported("SERVERPROPERTY " + a.text(0));
}

void addErrorFunctions(FunctionTable& table, Session& session) {
    Session* state = &session;
    const auto handled = [state]() -> const DbError* {
        for (auto frame = state->frames.rbegin(); frame != state->frames.rend(); ++frame)
            if (frame->error) return &*frame->error;
        return nullptr;
    };
    table.add("error_number", {"", always(integerType), [handled](const Arguments&) -> Value {
                                   return handled() ? Value(qint64(handled()->number())) : Value();
                               }});
    table.add("error_message", {"", always(Type::text(4000, true)), [handled](const Arguments&) -> Value {
                                    return handled() ? Value(handled()->text()) : Value();
                                }});
}

} // namespace

void addServerFunctions(FunctionTable& table, Session& session) {
    Session* state = &session;
    const auto with = [state](Value (*function)(const Session&, const Arguments&)) {
        return NativeFunction([state, function](const Arguments& a) { return function(*state, a); });
    };
    const auto changing = [state](Value (*function)(Session&, const Arguments&)) {
        return NativeFunction([state, function](const Arguments& a) { return function(*state, a); });
    };
    table.add("object_id", {"t[t", always(integerType), with(objectId)});
    table.add("objectproperty", {"it", always(integerType), with(objectProperty)});
    table.add("col_length", {"tt", always(integerType), with(columnLength)});
    table.add("db_id", {"[t", always(integerType), with(databaseId)});
    table.add("db_name", {"[i", always(nameType), with(databaseName)});
    table.add("has_dbaccess", {"t", always(integerType), [state](const Arguments& a) -> Value {
                                   const Database* database = state->catalog.database(a.text(0));
                                   return database ? Value(qint64(state->canEnter(*database))) : Value();
                               }});
    table.add("serverproperty", {"t", always(nameType), changing(serverProperty)});
    table.add("scope_identity",
              {"", always(Type::decimal(38, 0)), [state](const Arguments&) { return state->identity; }});
    table.add("suser_sname", {"", always(nameType), [state](const Arguments&) { return state->login; }});
    addErrorFunctions(table, session);
}

} // namespace embedded
