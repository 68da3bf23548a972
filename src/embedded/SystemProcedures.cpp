#include "embedded/SystemProcedures.h"

#include "embedded/Collation.h"
#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/Security.h"

namespace embedded {

namespace {

/// A call's arguments in the order of the procedure's parameters, null where none is given.
class Call {
public:
    Call(const QString& procedure, const QStringList& parameters, std::vector<CallArgument>& arguments)
        : m_procedure(procedure), m_parameters(parameters), m_given(std::size_t(parameters.size())) {
        const std::vector<std::size_t> places = placesOf(arguments, parameters, procedure);
        for (std::size_t i = 0; i < places.size(); ++i) m_given[places[i]] = &arguments[i];
    }

    CallArgument* argument(std::size_t place) const { return m_given[place]; }
    QString text(std::size_t place) const {
        const CallArgument* argument = m_given[place];
        if (!argument) throw missingArgument(m_procedure, m_parameters[qsizetype(place)]);
        const Type type = Type::text(Type::Max, true);
        return shown(Conversion{argument->type, type}(argument->value), type);
    }

private:
    QString m_procedure;
    QStringList m_parameters;
    std::vector<CallArgument*> m_given;
};

QString plainKey(QString key) {
    while (key.endsWith(u'\\')) key.chop(1);
    return key;
}

void registryRead(Session& session, std::vector<CallArgument>& arguments, Results&) {
    const Call call("xp_regread", {"@rootkey", "@key", "@value_name", "@value", "@no_output"}, arguments);
    const Value data = registryValue(session.file, call.text(0), call.text(1), call.text(2));
    CallArgument* target = call.argument(3);
    if (!target || target->outputVariable.isEmpty()) throw notSupported("xp_regread without OUTPUT");
    target->value = data;
    target->type = Type::text(Type::Max, true);
}

void registryWrite(Session& session, std::vector<CallArgument>& arguments, Results&) {
    const Call call("xp_regwrite", {"rootkey", "key", "value_name", "type", "value"}, arguments);
    security::require(session, "sysadmin");
    session.file.run(R"(INSERT OR REPLACE INTO "~registry" VALUES (?1, ?2, ?3, ?4, ?5))",
                     {call.text(0), plainKey(call.text(1)), call.text(2), call.text(3), call.text(4)});
}

void roleMembers(Session& session, std::vector<CallArgument>& arguments, Results& results) {
    const Call call("sp_helpsrvrolemember", {"@srvrolename"}, arguments);
    RecordSet set({"ServerRole", "MemberName", "MemberSID"});
    for (const QString& role : security::serverRoles()) {
        if (call.argument(0) && security::knownRole(call.text(0)) != role) continue;
        SqliteStatement members = session.file.prepare(
            R"(SELECT l.name, l.id FROM "~members" m JOIN "~logins" l ON l.name = m.login WHERE m.role = ?1
               ORDER BY l.name)",
            {role});
        while (members.step()) {
            set.append(role);
            set.append(members.text(0));
            set.append(QString::number(members.integer(1), 16).rightJustified(32, u'0'));
        }
    }
    results.sets.push_back(set);
}

} // namespace

Value registryValue(SqliteFile& file, const QString& hive, const QString& key, const QString& name) {
    return file.scalar(R"(SELECT data FROM "~registry" WHERE hive = ?1 AND key = ?2 AND name = ?3)",
                       {hive, plainKey(key), name});
}

bool systemProcedure(Session& session, const QString& name, std::vector<CallArgument>& arguments,
                     Results& results) {
    using Procedure = void (*)(Session&, std::vector<CallArgument>&, Results&);
    static const QHash<QString, Procedure> procedures{
        {"xp_regread", registryRead}, {"xp_regwrite", registryWrite}, {"sp_helpsrvrolemember", roleMembers}};
    const Procedure procedure = procedures.value(name.toLower());
    if (procedure) procedure(session, arguments, results);
    return procedure != nullptr;
}

} // namespace embedded
