#include "embedded/Session.h"

#include "embedded/Collation.h"
#include "embedded/Errors.h"

#include <QDir>
#include <QUuid>

namespace embedded {

bool Session::canEnter(const Database& target) const {
    const bool hasGuests = target.id <= 4; // the system databases
    return hasGuests || roles.contains("sysadmin") || target.access.value(collation::fold(login));
}

/// What the names of the lock files of sessions begin with, of those in one database or in any.
QString Session::presenceFiles(std::optional<qint64> target) const {
    const QString all = file.path() + "-in-";
    return target ? all + QString::number(*target) + '-' : all;
}

void Session::enter(qint64 target) {
    if (target == database) return;
    if (!m_presence) anyoneAlive(presenceFiles({})); // or the files of killed programs would pile up
    database = target;
    m_presence =
        std::make_unique<QLockFile>(presenceFiles(target) + QUuid::createUuid().toString(QUuid::Id128));
    m_presence->setStaleLockTime(0);
    m_presence->lock();
}

bool Session::isInUse(qint64 target) const {
    return anyoneAlive(presenceFiles(target));
}

/// Whether a session lives whose lock file's name begins so. Those that dead programs left are taken away.
bool Session::anyoneAlive(const QString& beginning) {
    const QFileInfo files(beginning);
    bool alive = false;
    for (const QFileInfo& other : files.dir().entryInfoList(QDir::Files)) {
        if (!other.fileName().startsWith(files.fileName())) continue;
        QLockFile probe(other.filePath());
        probe.setStaleLockTime(0);
        if (!probe.tryLock(0)) alive = true;
    }
    return alive;
}

const Database* Session::reach(const QString& name) const {
    const Database* found = name.isEmpty() ? &currentDatabase() : catalog.database(name);
    if (found && found->id != database && !canEnter(*found))
        throw serverError(916,
                          "The server principal \"%1\" is not able to access the database \"%2\" under the "
                          "current security context.",
                          login, found->name);
    return found;
}

const Database& Session::databaseNamed(const QString& name) const {
    if (const Database* found = reach(name)) return *found;
    throw noSuchDatabase(name);
}

const Object* Session::find(const ObjectName& name) const {
    if (const Object* table = temporary(name.name)) return table;
    const Database* owner = reach(name.database);
    const bool known = name.schema.isEmpty() || collation::equal(name.schema, "dbo");
    return owner && known ? catalog.object(owner->id, name.name) : nullptr;
}

const Object* Session::temporary(const QString& name) const {
    const QString key = collation::fold(name);
    // A procedure sees its callers' #tables, but only its own table variables.
    for (auto frame = frames.rbegin(); frame != frames.rend(); ++frame) {
        const auto found = frame->tables.find(key);
        if (found != frame->tables.end()) return &found->second;
        if (name.startsWith(u'@')) break;
    }
    return nullptr;
}

Variable& Session::variable(const QString& name) {
    if (!frames.empty()) {
        const auto found = frames.back().variables.find(collation::fold(name));
        if (found != frames.back().variables.end()) return found->second;
    }
    throw serverError(137, "Must declare the scalar variable \"%1\".", name);
}

Value Session::valueOf(const QString& name) {
    return name.startsWith("@@") ? serverValue(name).value : variable(name).value;
}

Type Session::typeOf(const QString& name) {
    if (name.startsWith("@@")) return serverValue(name).type;
    const Variable& found = variable(name);
    if (!found.cursor.isNull()) throw serverError(16924, "%1 is a cursor, not a value.", name);
    return found.type;
}

Variable Session::serverValue(const QString& name) const {
    const QString key = name.mid(2).toLower();
    const Type integer = Type::of(Type::Int);
    const Type text = Type::text(300, true);
    if (key == "identity") return {Type::decimal(38, 0), identity, {}};
    if (key == "rowcount") return {integer, rowCount, {}};
    if (key == "error") return {integer, qint64(lastError), {}};
    if (key == "fetch_status") return {integer, qint64(fetchStatus), {}};
    if (key == "trancount") return {integer, qint64(transactionDepth), {}};
    if (key == "servername") return {text, QString("EMBEDDED"), {}};
    if (key == "version") return {text, QString("Scheduler embedded server"), {}};
    throw notSupported(name);
}

} // namespace embedded
