#include "embedded/SystemProcedures.h"

#include "embedded/Collation.h"
#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/Registry.h"
#include "embedded/Security.h"

namespace embedded {

namespace {

/// A call's arguments by the procedure's parameter names.
class Call {
public:
    Call(const QString& procedure, const QStringList& parameters, std::vector<CallArgument>& arguments)
        : m_procedure(procedure), m_parameters(parameters) {
        if (qsizetype(arguments.size()) > parameters.size())
            throw DbError(
                8144, QString("Procedure or function %1 has too many arguments specified.").arg(procedure));
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            QString name = parameters[qsizetype(i)];
            if (!arguments[i].name.isEmpty()) name = arguments[i].name.mid(1).toLower();
            if (!parameters.contains(name))
                throw DbError(8145, QString("@%1 is not a parameter for procedure %2.").arg(name, procedure));
            m_given.insert(name, &arguments[i]);
        }
    }

    QString text(const QString& name) const {
        const CallArgument* argument = m_given.value(name);
        if (!argument)
            throw DbError(
                201, QString("Procedure or function '%1' expects parameter '@%2', which was not supplied.")
                         .arg(m_procedure, name));
        const Type type = Type::text(Type::Max, true);
        return shown(Conversion{argument->type, type}(argument->value), type);
    }
    bool has(const QString& name) const { return m_given.contains(name); }
    CallArgument* argument(const QString& name) const { return m_given.value(name); }

private:
    QString m_procedure;
    QStringList m_parameters;
    QHash<QString, CallArgument*> m_given;
};

void registryRead(Session& session, std::vector<CallArgument>& arguments, Results& results) {
    const Call call("xp_regread", {"rootkey", "key", "value_name", "value", "no_output"}, arguments);
    const Value data =
        registry::read(session.file, call.text("rootkey"), call.text("key"), call.text("value_name"));
    CallArgument* target = call.argument("value");
    if (target && !target->outputVariable.isEmpty()) {
        target->value = data;
        target->type = Type::text(Type::Max, true);
        return;
    }
    RecordSet set({"Value", "Data"});
    if (!isNull(data)) {
        set.append(call.text("value_name"));
        set.append(std::get<QString>(data));
    }
    results.sets.push_back(set);
}

void registryWrite(Session& session, std::vector<CallArgument>& arguments, Results&) {
    const Call call("xp_regwrite", {"rootkey", "key", "value_name", "type", "value"}, arguments);
    security::require(session, "sysadmin");
    registry::write(session.file, call.text("rootkey"), call.text("key"), call.text("value_name"),
                    call.text("type"), call.text("value"));
}

void roleMembers(Session& session, std::vector<CallArgument>& arguments, Results& results) {
    const Call call("sp_helpsrvrolemember", {"srvrolename"}, arguments);
    RecordSet set({"ServerRole", "MemberName", "MemberSID"});
    for (const QString& role : security::serverRoles()) {
        if (call.has("srvrolename") && !collation::equal(security::knownRole(call.text("srvrolename")), role))
            continue;
        SqliteStatement members = session.file.prepare(
            R"(SELECT l.name, l.id FROM "~members" m JOIN "~logins" l ON l.name = m.login WHERE m.role = ?1
               ORDER BY l.name)");
        members.bind(1, role);
        while (members.step()) {
            set.append(role);
            set.append(members.text(0));
            set.append(QString::number(members.integer(1), 16).rightJustified(32, u'0'));
        }
    }
    results.sets.push_back(set);
}

} // namespace

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
