// The calls of Executor: procedures, EXEC ('…') and sp_executesql, each in a frame of its own.
#include "embedded/Executor.h"

#include "embedded/Collation.h"
#include "embedded/Conversion.h"
#include "embedded/DdlExecutor.h"
#include "embedded/Errors.h"
#include "embedded/Parser.h"
#include "embedded/SystemProcedures.h"

namespace embedded {

std::vector<std::size_t> placesOf(const std::vector<CallArgument>& arguments, const QStringList& parameters,
                                  const QString& procedure) {
    if (qsizetype(arguments.size()) > parameters.size())
        throw serverError(8144, "Procedure or function %1 has too many arguments specified.", procedure);
    std::vector<std::size_t> places;
    for (const CallArgument& argument : arguments) {
        qsizetype place = qsizetype(places.size());
        if (!argument.name.isEmpty())
            for (place = 0; place < parameters.size(); ++place)
                if (collation::equal(parameters[place], argument.name)) break;
        if (place == parameters.size())
            throw serverError(8145, "%1 is not a parameter for procedure %2.", argument.name, procedure);
        places.push_back(std::size_t(place));
    }
    return places;
}

DbError missingArgument(const QString& procedure, const QString& parameter) {
    return serverError(201, "Procedure or function '%1' expects parameter '%2', which was not supplied.",
                       procedure, parameter);
}

void Executor::run(const ExecuteStatement& statement) {
    if (statement.text) {
        const Type type = Type::text(Type::Max, true);
        std::vector<CallArgument> none;
        return runText(shown(evaluate(statement.text, type), type), {}, none);
    }
    std::vector<CallArgument> arguments = evaluateArguments(statement.arguments);
    const ObjectName& name = statement.procedure;
    Value returned = qint64(0);
    if (const Object* procedure = procedureNamed(name)) {
        const Object copy = *procedure;
        runProcedure(copy, arguments);
        returned = m_session.frames.back().returnValue;
        m_session.frames.back().returnValue = qint64(0);
    } else if (collation::equal(name.name, "sp_executesql")) {
        executeSql(arguments);
    } else if (!systemProcedure(m_session, name.name, arguments, m_results)) {
        throw serverError(DbError::NoSuchProcedure, "Could not find stored procedure '%1'.", name.toString());
    }
    for (const CallArgument& argument : arguments) {
        if (argument.outputVariable.isEmpty()) continue;
        Variable& target = m_session.variable(argument.outputVariable);
        target.value = Conversion{argument.type, target.type}(argument.value);
    }
    if (!statement.resultVariable.isEmpty()) m_session.variable(statement.resultVariable).value = returned;
}

std::vector<CallArgument> Executor::evaluateArguments(const std::vector<Argument>& arguments) {
    std::vector<CallArgument> evaluated;
    for (const Argument& argument : arguments) {
        CallArgument call;
        call.name = argument.name;
        call.isDefault = !argument.value;
        if (argument.value) {
            const Translation translation = translator().single(argument.value, {});
            SqliteStatement statement = prepared(translation);
            if (statement.step()) call.value = statement.value(0);
            call.type = translation.types[0];
        }
        if (argument.output) {
            if (!argument.value || argument.value->kind != Expr::Variable)
                throw DbError(179,
                              "Cannot use the OUTPUT option when passing a constant to a stored procedure.");
            call.outputVariable = argument.value->text;
        }
        evaluated.push_back(call);
    }
    return evaluated;
}

/// In the given or current database; a name that begins with sp_ also in master.
const Object* Executor::procedureNamed(const ObjectName& name) {
    const Object* found = m_session.find(name);
    if (!found && name.name.startsWith("sp_", Qt::CaseInsensitive))
        found = m_session.catalog.object(1, name.name);
    return found && found->kind == ObjectKind::Procedure ? found : nullptr;
}

void Executor::runProcedure(const Object& procedure, std::vector<CallArgument>& arguments) {
    auto& known = m_procedures[procedure.id];
    if (!known.second || known.first != procedure.text)
        known = {procedure.text, std::make_shared<Batch>(parseProcedure(procedure.text))};
    const std::shared_ptr<const Batch> body = known.second;
    runNested(*body, body->parameters, arguments, procedure.database, procedure.name);
}

void Executor::executeSql(std::vector<CallArgument>& arguments) {
    if (arguments.empty()) throw missingArgument("sp_executesql", "@statement");
    const Type type = Type::text(Type::Max, true);
    const QString text = shown(Conversion{arguments[0].type, type}(arguments[0].value), type);
    std::vector<Parameter> parameters;
    if (arguments.size() > 1) {
        const QString list = shown(Conversion{arguments[1].type, type}(arguments[1].value), type);
        parameters = parseParameterList(list);
    }
    std::vector<CallArgument> passed(
        arguments.begin() + qsizetype(std::min<std::size_t>(2, arguments.size())), arguments.end());
    runText(text, parameters, passed);
    std::copy(passed.begin(), passed.end(), arguments.end() - qsizetype(passed.size()));
}

void Executor::runText(const QString& text, const std::vector<Parameter>& parameters,
                       std::vector<CallArgument>& arguments) {
    const Batch batch = parseBatch(text, m_session.quotedIdentifiers);
    runNested(batch, parameters, arguments, m_session.database, "sp_executesql");
    m_session.frames.back().returnValue = qint64(0);
}

void Executor::runNested(const Batch& batch, const std::vector<Parameter>& parameters,
                         std::vector<CallArgument>& arguments, qint64 database, const QString& name) {
    if (m_session.frames.size() > 32) throw DbError(217, "Maximum nesting level exceeded (limit 32).");
    QStringList names;
    for (const Parameter& parameter : parameters) names.append(parameter.variable.name);
    const std::vector<std::size_t> places = placesOf(arguments, names, name);
    Frame frame;
    for (std::size_t p = 0; p < parameters.size(); ++p) {
        const VariableDef& parameter = parameters[p].variable;
        Variable variable{parameter.type, {}, {}};
        const auto given = std::find(places.begin(), places.end(), p);
        const CallArgument* argument =
            given == places.end() ? nullptr : &arguments[std::size_t(given - places.begin())];
        if (argument && !argument->isDefault) {
            variable.value = Conversion{argument->type, parameter.type}(argument->value);
            if (!argument->outputVariable.isEmpty() && !parameters[p].output)
                throw serverError(8162, "The parameter \"%1\" was not declared as an OUTPUT parameter.",
                                  parameter.name);
        } else if (parameter.initial) {
            variable.value = evaluate(parameter.initial, parameter.type);
        } else {
            throw missingArgument(name, parameter.name);
        }
        frame.variables[collation::fold(parameter.name)] = variable;
    }

    m_session.frames.push_back(std::move(frame));
    const qint64 formerDatabase = m_session.database;
    m_session.enter(database);
    const bool noCount = m_session.noCount, abortOnError = m_session.abortOnError,
               ansiNulls = m_session.ansiNulls;
    const auto leave = [&] {
        leaveFrame();
        m_session.enter(formerDatabase);
        m_session.noCount = noCount;
        m_session.abortOnError = abortOnError;
        m_session.ansiNulls = ansiNulls;
    };
    try {
        declareVariables(batch.variables);
        execute(batch.statements);
    } catch (...) {
        leave();
        throw;
    }
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].outputVariable.isEmpty()) continue;
        const VariableDef& parameter = parameters[places[i]].variable;
        arguments[i].value = m_session.variable(parameter.name).value;
        arguments[i].type = parameter.type;
    }
    const Value returned = m_session.frames.back().returnValue;
    leave();
    m_session.frames.back().returnValue = returned;
}

void Executor::declareVariables(const std::vector<VariableDef>& variables) {
    Frame& frame = m_session.frames.back();
    for (const VariableDef& definition : variables) {
        const QString key = collation::fold(definition.name);
        if (frame.variables.count(key) || frame.tables.count(key))
            throw serverError(134, "The variable name '%1' has already been declared.", definition.name);
        if (definition.table)
            DdlExecutor(m_session, m_functions).createTemporary(definition.name, *definition.table);
        else
            frame.variables[key] = {definition.type, {}, definition.isCursor ? QString("") : QString()};
    }
}

/// Ends a frame: its table variables, #tables and cursors go with it. The session's own frame stays,
/// and keeps its #tables and named cursors.
void Executor::leaveFrame() {
    Frame& frame = m_session.frames.back();
    const bool isOwn = m_session.frames.size() == 1;
    for (auto table = frame.tables.begin(); table != frame.tables.end();) {
        if (isOwn && table->first.startsWith(u'#')) {
            ++table;
            continue;
        }
        m_session.file.run("DROP TABLE IF EXISTS " + table->second.sqlName());
        table = frame.tables.erase(table);
    }
    QStringList kept;
    for (const QString& cursor : frame.cursors) {
        if (isOwn && !cursor.startsWith(u'@'))
            kept.append(cursor);
        else
            m_session.cursors.erase(cursor);
    }
    frame.cursors = kept;
    if (!isOwn) m_session.frames.pop_back();
}

} // namespace embedded
