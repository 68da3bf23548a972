#include "app/SecurityFile.h"
#include "support/TestClass.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class SecurityFileTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(SecurityFileName);

    QByteArray contents() const {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void replaceContents(const QByteArray& bytes) const {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

private slots:
    void cleanup() { QFile::remove(m_path); }

    void passwordsComeBack_data() {
        QTest::addColumn<QString>("password");
        QTest::newRow("one letter") << "x";
        QTest::newRow("blanks and signs") << " a;{}\"'\\\n ";
        QTest::newRow("other alphabets") << "пароль密码😀";
        QTest::newRow("long") << QString(4096, 'x');
    }

    void passwordsComeBack() {
        QFETCH(QString, password);
        WriteEncryptedSSSfile(m_path, password);
        QCOMPARE(ReadPasswordFromEncryptedSSSfile(m_path).value_or("none"), password);
        const QByteArray first = contents();
        if (password.size() > 1) QVERIFY(!first.contains(password.toUtf8()));
        WriteEncryptedSSSfile(m_path, password);
        QVERIFY(contents() != first); // equal passwords cannot be told from their files
    }

    void everyChangedByteIsNoticed() {
        WriteEncryptedSSSfile(m_path, "secret");
        const QByteArray whole = contents();
        for (qsizetype at = 0; at < whole.size(); ++at) {
            QByteArray changed = whole;
            changed[at] = char(changed[at] ^ 1);
            replaceContents(changed);
            QVERIFY2(!ReadPasswordFromEncryptedSSSfile(m_path), qPrintable(QString::number(at)));
        }
    }

    void everyOtherLengthIsNoticed() {
        WriteEncryptedSSSfile(m_path, "secret");
        const QByteArray whole = contents();
        for (qsizetype length = 0; length < whole.size(); ++length) {
            replaceContents(whole.left(length));
            QVERIFY2(!ReadPasswordFromEncryptedSSSfile(m_path), qPrintable(QString::number(length)));
        }
        replaceContents(whole + '\0');
        QVERIFY(!ReadPasswordFromEncryptedSSSfile(m_path));
        replaceContents(whole + QByteArray(100'000, 'x'));
        QVERIFY(!ReadPasswordFromEncryptedSSSfile(m_path));
    }

    void aMissingFileGivesNothing() {
        QVERIFY(!ReadPasswordFromEncryptedSSSfile(m_path));
        QVERIFY(!ReadPasswordFromEncryptedSSSfile(m_folder.path()));
    }

    void whatCannotBeWrittenLeavesTheFileAlone() {
        WriteEncryptedSSSfile(m_path, "secret");
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, WriteEncryptedSSSfile(m_path, ""));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, WriteEncryptedSSSfile(m_path, QString(4097, 'x')));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, WriteEncryptedSSSfile(m_path + "/none/x", "secret"));
        QCOMPARE(ReadPasswordFromEncryptedSSSfile(m_path).value_or("none"), "secret");
    }

    void onlyTheOwnerReadsANewFile() {
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        WriteEncryptedSSSfile(m_path, "secret");
        QCOMPARE(QFile::permissions(m_path) & others, QFile::Permissions());
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
        WriteEncryptedSSSfile(m_path, "another");
        QCOMPARE(QFile::permissions(m_path) & others, QFile::Permissions(QFile::ReadGroup));
    }
};

static const AnnounceTest<SecurityFileTest> announced;

#include "SecurityFileTest.moc"
