#include "db/Sql.h"
#include "db/ConnectionString.h"
#include "db/RecordSet.h"
#include "errorOf.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <limits>

class SqlTest : public QObject {
    Q_OBJECT

private slots:
    void valuesBecomeLiterals_data() {
        const Rows<Sql, QString> row;
        row("apostrophe", sql("{}", QString("O'Brien")), "N'O''Brien'");
        row("injection", sql("{}", QString("'; DROP TABLE x --")), "N'''; DROP TABLE x --'");
        row("braces in a value", sql("{}, {}", QString("{}"), QString("b")), "N'{}', N'b'");
        row("other alphabets", sql("{}", QString("Ωμέγα 😀")), "N'Ωμέγα 😀'");
        row("null text", sql("{}", QString()), "N''");
        row("bracket", sql("{}", Name("x]y")), "[x]]y]");
        row("largest integer", sql("{}", std::numeric_limits<qint64>::min()), "-9223372036854775808");
        row("flag", sql("{}", true), "1");
        row("fraction", sql("{}", 0.1), "0.1");
        row("date", sql("{}", QDate(2008, 4, 1)), "'20080401'");
        row("no date", sql("{}", QDate()), "NULL");
        row("nothing", sql("{}", std::optional<int>()), "NULL");
        row("nested", sql("({})", Sql::join({sql("{}", 1), sql("{}", 2)}, sql(", "))), "(1, 2)");
    }

    void valuesBecomeLiterals() {
        const auto [literal, expected] = thisRow<Sql, QString>();
        QCOMPARE(literal.text(), expected);
    }

    void whatCannotBeStoredIsRefused() {
        for (const QChar sign : {QChar(u'\0'), QChar(0xd83d), QChar(0xde00)}) {
            const QString text = QString("a") + sign + "b";
            QVERIFY(errorOf<Refusal>([&] { sql("{}", text); }));
            QVERIFY(errorOf<Refusal>([&] { sql("{}", Name(text)); }));
            QVERIFY(errorOf<Refusal>([&] { sql("{}", Secret{text}); }));
        }
        QVERIFY(errorOf<Refusal>([] { sql("{}", Name("")); }));
        QVERIFY(errorOf<Refusal>([] { sql("{}", std::numeric_limits<double>::infinity()); }));
    }

    void secretsAreSentButNotShown() {
        const Sql login = sql("SELECT {} + {}", QString("user"), Secret{"pass'word"});
        QCOMPARE(login.text(), "SELECT N'user' + N'pass''word'");
        QCOMPARE(login.shown(), "SELECT N'user' + N'***'");
    }

    void rowsGiveTypedValues() {
        RecordSet set({"ID", "Text", "Moment"});
        for (const QString& value : {QString("17"), QString(""), QString("2008-04-01 09:05:07.500"),
                                     QString("3000000000"), QString(), QString("2008-04-01")})
            set.append(value);
        QCOMPARE(set.rowCount(), 2);
        QCOMPARE(set.row(0).integer("id"), 17);
        QVERIFY(!set.row(0).isNull("Text") && set.row(1).isNull("TEXT"));
        QCOMPARE(set.row(1).integer("ID"), 0); // more than an int holds
        QCOMPARE(set.row(1).number("ID"), 3e9);
        for (const Row row : set) QCOMPARE(row.date("Moment"), QDate(2008, 4, 1));
    }

    void anUnknownColumnIsAnError() {
        RecordSet set({"ID"});
        set.append(u"1");
        set.append(u"2");
        QCOMPARE(errorOf([&] { set.row(0).text("Title"); })->number(), DbError::InvalidColumn);
        QVERIFY(errorOf([&] { set.row(0).text(1); })); // not the next row's value
    }
};

static const AnnounceTest<SqlTest> announced;

#include "SqlTest.moc"
