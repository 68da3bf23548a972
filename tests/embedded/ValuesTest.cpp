#include "ServerFile.h"
#include "support/TestClass.h"

#include <QTest>

/// What expressions yield, in type, value and written form.
class ValuesTest : public QObject {
    Q_OBJECT

    ServerFile m_file;
    std::unique_ptr<Server> m_server = m_file.open();

private slots:
    void expression_data() {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* expression, const char* expected) {
            QTest::newRow(expression) << expression << expected;
        };
        // Written forms
        row("cast('true' as bit)", "1");
        row("cast(12.3 as decimal(15,2))", "12.30");
        row("cast(-0.001 as decimal(15,2))", "0.00");
        row("cast('2008/04/01' as datetime)", "2008-04-01 00:00:00.000");
        row("cast('20080401 09:05:31' as smalldatetime)", "2008-04-01 09:06:00");
        row("cast('2008-04-01T09:05:00.999' as datetime)", "2008-04-01 09:05:01.000");
        row("cast('20080401 13:05' as date)", "2008-04-01");
        // Arithmetic
        row("-7/2", "-3");
        row("cast('-9223372036854775808' as bigint) % -1", "0");
        row("abs(cast('-9223372036854775807' as bigint))", "9223372036854775807");
        row("7/2.0", "3.500000");
        row("2.0/3", "0.666666");
        row("1.10 + 2.205", "3.305");
        row("$10 / 3", "3.3333");
        row("1 + '2'", "3");
        row("'1' + '2'", "12");
        row("5 & 3 | 8", "9");
        row("'a' + null", "NULL");
        row("cast(0.1 as money) * 3", "0.3000");
        row("round(1.005, 2)", "1.010");
        row("round(-15, -1)", "-20");
        // Conversions
        row("cast(' 12 ' as int)", "12");
        row("cast('' as int)", "0");
        row("cast(1.9 as int)", "1");
        row("cast('abcdef' as varchar(3))", "abc");
        row("cast(12345 as varchar(3))", "*");
        row("len(cast('a' as char(5)) + 'b')", "6");
        row("convert(varchar(30), cast('20080401 13:05' as datetime))", "Apr  1 2008  1:05PM");
        row("convert(varchar(30), cast('20080401' as datetime), 103)", "01/04/2008");
        row("convert(varchar(30), cast('20080401 13:05:07' as datetime), 120)", "2008-04-01 13:05:07");
        row("convert(varchar(8), cast('20080401' as datetime), 112)", "20080401");
        row("convert(datetime, '01/04/2008', 103)", "2008-04-01 00:00:00.000");
        row("convert(datetime, '01/04/2008', 101)", "2008-01-04 00:00:00.000");
        row("cast(39537 as datetime)", "2008-04-01 00:00:00.000");
        row("cast(cast('20080401 18:00' as datetime) as int)", "39538");
        row("cast(N'Ω' as varchar(5))", "?");
        row("cast(N'€é' as varchar(5))", "€é");
        // Dates in all the forms that people write
        for (const char* date : {"2008/04/01", "20080401", "2008-04-01", "2008-04-01T00:00:00", "1 Apr 2008",
                                 "2008-Apr-01 00:00:00", "April 1, 2008", "1-apr-08", "04/01/2008"})
            QTest::addRow("date %s", date)
                << QString("convert(varchar(10), cast('%1' as datetime), 120)").arg(date) << "2008-04-01";
        row("cast('9:05PM' as datetime)", "1900-01-01 21:05:00.000");
        row("cast('' as datetime)", "1900-01-01 00:00:00.000");
        // Date functions: days of the week are numbered from Sunday
        row("datepart(dw, '2008/04/01')", "3");
        row("datepart(dw, '2008/04/05')", "7");
        row("datediff(yy, '20071231', '20080101')", "1");
        row("datediff(wk, '20080405', '20080406')", "1");
        row("dateadd(mm, 1, '20080131')", "2008-02-29 00:00:00.000");
        row("cast('20080401' as datetime) + 1.5", "2008-04-02 12:00:00.000");
        row("year('20080401') * 100 + month('20080401')", "200804");
        // Texts
        row("len('ab  ')", "2");
        row("charindex('b', 'abcb', 3)", "4");
        row("replace('aAb', 'A', 'x')", "xxb");
        row("substring('hello', 0, 3)", "he");
        row("left('hello', 2) + right('hello', 2)", "helo");
        row("upper('é') + lower('É')", "Éé");
        row("char(65) + char(128)", "A€");
        row("'O''Brien'", "O'Brien");
        // Choices
        row("isnull(cast(null as varchar(2)), 'xyz')", "xy");
        row("coalesce(null, 2, 3)", "2");
        row("nullif('a', 'A')", "NULL");
        row("case when 1 = 2 then 'a' end", "NULL");
        row("case 'B' when 'b' then 1 else 2.5 end", "1.0");
        // Comparisons: case, blanks at the end and accents
        for (const char* alike : {"'a' = 'A'",
                                  "'a' = 'a  '",
                                  "N'é' = N'É'",
                                  "'' = '  '",
                                  "'2' = 2",
                                  "'1.0' = 1.0",
                                  "'20080401' = cast('2008/04/01' as datetime)",
                                  "'a' < 'B'",
                                  "'Z' < N'é' or 'e' < N'é'",
                                  "'a_' < 'ab'",
                                  "'9' < 'a'",
                                  "N'éa' > 'ea'",
                                  "N'éa' < 'eb'",
                                  "'b' in ('A', 'B')",
                                  "2 in ('1', '2')",
                                  "'B' between 'a' and 'c'",
                                  "'Abc' like 'a%C'",
                                  "'a]' like '[a-f]]'",
                                  "'5' like '[^a-z]'",
                                  "'50%' like '50!%' escape '!'",
                                  "'abc  ' like 'abc'",
                                  "not 'abc' like 'ab'",
                                  "null is null",
                                  "not (1 = 2 and 1/0 = 1)"})
            QTest::newRow(alike) << QString("case when %1 then 'yes' else 'no' end").arg(alike) << "yes";
        for (const char* different : {"'e' = N'é'", "null = null", "1 in (2, null)", "1 not in (2, null)",
                                      "'a' like 'b_'", "' a' = 'a'"})
            QTest::newRow(different) << QString("case when %1 then 'yes' else 'no' end").arg(different)
                                     << "no";
        // The server
        row("suser_sname()", "sa");
        row("db_id('MASTER')", "1");
        row("has_dbaccess('tempdb')", "1");
        row("has_dbaccess('none')", "NULL");
        row("serverproperty('InstanceName')", "NULL");
    }

    void expression() {
        QFETCH(QString, expression);
        QFETCH(QString, expected);
        QCOMPARE(rowsOf(*m_server, "select " + expression), expected);
    }

    void ordersLikeADictionary() {
        QCOMPARE(rowsOf(*m_server,
                        "select a from (select 'b' a union all select N'é' union all select 'E' union all "
                        "select '9' union all select '_' union all select 'f' union all select null) t "
                        "order by a"),
                 "NULL;_;9;b;E;é;f");
    }

    void oneValueOfThoseThatCompareEqual() {
        QCOMPARE(
            rowsOf(*m_server, "select count(*) from (select 'a' x union select 'A ' union select N'á') t"),
            "2");
        QCOMPARE(rowsOf(*m_server,
                        "select count(distinct x), max(x) from (select 'a' x union all select 'A' union all "
                        "select 'B') t"),
                 "2|B");
    }

    void aggregatesKeepTheirTypes() {
        QCOMPARE(
            rowsOf(*m_server,
                   "select sum(x), avg(x), min(x), count(x) from (select 1 x union all select 2 union all "
                   "select null) t"),
            "3|1|1|2");
        QCOMPARE(rowsOf(*m_server, "select sum(x), avg(x) from (select $1.5 x union all select $2) t"),
                 "3.5000|1.7500");
        QCOMPARE(rowsOf(*m_server,
                        "select sum(x), isnull(sum(x), 0) from (select cast(1 as decimal(5,2)) x) t "
                        "where 1 = 0"),
                 "NULL|0.00");
    }
};

static const AnnounceTest<ValuesTest> announced;

#include "ValuesTest.moc"
