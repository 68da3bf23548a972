#include "app/SecurityFile.h"
#include "support/Files.h"
#include "support/TestClass.h"

#include <QTemporaryDir>

class SecurityFileTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(SecurityFileName);

private slots:
    void cleanup() { QFile::remove(m_path); }

    void passwordsComeBack() {
        for (const QString& password :
             {QString("x"), QString(" a;{}\"'\\\n "), QString("пароль密码😀"), QString(4096, 'x')}) {
            WriteEncryptedSSSfile(m_path, password);
            QCOMPARE(ReadPasswordFromEncryptedSSSfile(m_path).value_or("none"), password);
            const QByteArray first = readFile(m_path);
            if (password.size() > 1) QVERIFY(!first.contains(password.toUtf8()));
            WriteEncryptedSSSfile(m_path, password);
            QVERIFY(readFile(m_path) != first); // equal passwords cannot be told from their files
        }
    }

    void whatIsNotWholeGivesNothing() {
        QVERIFY(!ReadPasswordFromEncryptedSSSfile(m_path));
        QVERIFY(!ReadPasswordFromEncryptedSSSfile(m_folder.path()));
        WriteEncryptedSSSfile(m_path, "secret");
        const QByteArray whole = readFile(m_path);
        QList<QByteArray> damaged{whole + '\0', whole + QByteArray(100'000, 'x')};
        for (qsizetype at = 0; at < whole.size(); ++at) {
            damaged << whole.left(at) << whole;
            damaged.last()[at] = char(whole[at] ^ 1);
        }
        for (const QByteArray& bytes : damaged) {
            writeFile(m_path, bytes);
            QVERIFY2(!ReadPasswordFromEncryptedSSSfile(m_path), bytes.toHex().left(1000).constData());
        }
    }

    void whatCannotBeWrittenLeavesTheFileAlone() {
        WriteEncryptedSSSfile(m_path, "secret");
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, WriteEncryptedSSSfile(m_path, ""));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, WriteEncryptedSSSfile(m_path, QString(4097, 'x')));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, WriteEncryptedSSSfile(m_path + "/none/x", "secret"));
        QCOMPARE(ReadPasswordFromEncryptedSSSfile(m_path).value_or("none"), "secret");
    }

    void onlyTheOwnerReadsANewFile() {
#ifdef Q_OS_WIN
        QSKIP("Windows' access lists are no permissions of this kind.");
#endif
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
