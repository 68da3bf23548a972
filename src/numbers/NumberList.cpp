#include "numbers/NumberList.h"

#include "base/Session.h"
#include "db/DbError.h"

namespace {

constexpr int CalledNoLength = 20;
const QString tableEnding = "_TblCallsTo";

} // namespace

NumberList::NumberList(Session& session)
    : NumberTable(CalledNoLength),
      m_session(session),
      m_project(session.project.database),
      m_table(session.userName + '_' + m_desk.name() + tableEnding),
      m_connection(session.db().another(session.project.database)) {}

NumberList::~NumberList() {
    try {
        dropTable(m_table);
    } catch (const DbError& error) {
        m_session.log.write("NumberList.DropTable", error); // the next list on this computer drops it
    }
}

void NumberList::dropTable(const QString& name) {
    m_connection.execute(
        sql("if object_id({}) is not null drop table [dbo].{}", "[dbo]." + Name(name).quoted(), Name(name)));
}

void NumberList::CreateTblCallsTo() {
    const QString beginning = m_session.userName + '_';
    for (const Row row : m_connection.query(
             sql("SELECT [name] FROM dbo.sysobjects WHERE [name] LIKE {}", '%' + tableEnding))) {
        const QString name = row.text(0);
        if (name.startsWith(beginning)
            && DeskMark::isLeftOver(name.mid(beginning.size()).chopped(tableEnding.size())))
            dropTable(name);
    }
    const Name table(m_table);
    DefaultDatabase inProject(m_session.db(), m_session.project.database);
    m_session.db().execute(sql(
        "if exists (select * from dbo.sysobjects where id = object_id({}) and "
        "OBJECTPROPERTY(id, N'IsUserTable') = 1) drop table [dbo].{}\r\n"
        "CREATE TABLE [dbo].{} ([CalledNo] [varchar] (20) COLLATE Latin1_General_CI_AS NULL) ON [PRIMARY]",
        "[dbo]." + table.quoted(), table, table));
}

NumberTable::LeftOut NumberList::SetupNumbers(const QString& list, const Progress& progress) {
    QStringList numbers;
    for (const QString& piece : list.split(','))
        if (const QString number = piece.trimmed(); !number.isEmpty()) numbers << number;
    const Fitting usable = fitting(numbers);
    replace(usable.numbers, progress);
    return usable.leftOut;
}

Sql NumberList::selectNumbers() const {
    return sql("SELECT CalledNo FROM {}.dbo.{}", m_project, Name(m_table));
}

Sql NumberList::deleteAll() const {
    return sql("DELETE FROM {}.dbo.{}", m_project, Name(m_table));
}

Sql NumberList::selectThese(const Sql& condition) const {
    return sql("SELECT CalledNo FROM {}.dbo.{} WHERE CalledNo {}", m_project, Name(m_table), condition);
}

Sql NumberList::deleteThese(const Sql& condition) const {
    return sql("DELETE FROM {}.dbo.{} WHERE CalledNo {}", m_project, Name(m_table), condition);
}

Sql NumberList::insertInto() const {
    return sql("INSERT INTO {}.dbo.{} (CalledNo) VALUES ", m_project, Name(m_table));
}

Sql NumberList::values(const QString& number) const {
    return sql("({})", number);
}
