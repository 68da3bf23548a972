#include "fuzz/entries.h"
#include "support/Files.h"
#include "support/TestClass.h"

#include <QDir>
#include <QDirIterator>

/// The seeds of the fuzz targets, with every input that once did harm.
class CorpusTest : public QObject {
    Q_OBJECT

private slots:
    void input_data() {
        QTest::addColumn<QString>("path");
        const QDir corpus(FUZZ_CORPUS);
        for (QDirIterator file(corpus.path(), QDir::Files, QDirIterator::Subdirectories); file.hasNext();) {
            const QString path = file.next();
            QTest::newRow(qPrintable(corpus.relativeFilePath(path))) << path;
        }
    }

    void input() {
        QFETCH(QString, path);
        static const QHash<QString, void (*)(const QByteArray&)> entries{{"sql", fuzz::sql},
                                                                         {"numbers", fuzz::numbers},
                                                                         {"addresses", fuzz::addresses},
                                                                         {"security", fuzz::security}};
        try {
            entries[QFileInfo(path).dir().dirName()](readFile(path));
        } catch (const std::exception& error) {
            QFAIL(error.what());
        }
    }
};

static const AnnounceTest<CorpusTest> announced;

#include "CorpusTest.moc"
