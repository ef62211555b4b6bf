#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

class Hints : public QObject
{
    Q_OBJECT

private slots:
    void makeEveryTextOfTheProgramChinese();
    void holdNoTextThatTheProgramDoesNotHave();
    void holdNoTextOfTheFixedCatalogue();
    void areCompiledIn();
};

namespace {

/// Context and source text of a message.
using Key = QPair<QString, QString>;

/// The messages of a catalogue's source. Aborts the test if it cannot be read or a message is not
/// translated.
QSet<Key> messages(const QString &path, bool translated)
{
    QSet<Key> keys;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    QString context;
    QString source;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "name")
            context = xml.readElementText();
        else if (xml.name() == "source")
            source = xml.readElementText();
        else if (xml.name() == "translation") {
            if (translated && xml.attributes().hasAttribute("type"))
                qFatal("unfinished: %s", qPrintable(source));
            keys.insert({context, source});
        }
    }
    return keys;
}

QSet<Key> catalogue(const char *name)
{
    return messages(QString(VANTREL_CATALOGUES "/") + name, true);
}

/// The translatable texts in the sources.
QSet<Key> textsOfTheProgram()
{
    const QTemporaryDir scratch;
    const QString found = scratch.filePath("all.ts");
    QProcess lupdate;
    lupdate.start(VANTREL_LUPDATE, {"-silent", "-recursive", VANTREL_SOURCES, "-ts", found});
    if (!lupdate.waitForFinished(60000) || lupdate.exitCode() != 0)
        qFatal("lupdate failed: %s", lupdate.readAllStandardError().constData());
    return messages(found, false);
}

/// Placeholders in the wait dialog's form, which are never shown.
const QSet<Key> placeholders = {{"CWaitDialog", "Dialog"}, {"CWaitDialog", "TextLabel"}};

QByteArray list(const QSet<Key> &keys)
{
    QByteArray text;
    for (const Key &key : keys)
        text += key.first.toUtf8() + ": " + key.second.toUtf8() + '\n';
    return text;
}

} // namespace

void Hints::makeEveryTextOfTheProgramChinese()
{
    const QSet<Key> texts = textsOfTheProgram();
    QVERIFY(texts.contains(Key("CommonTitleBar", "Close")));
    const QSet<Key> missing =
        texts - catalogue("Linguist_CN.ts") - catalogue("Hints_CN.ts") - placeholders;
    QVERIFY2(missing.isEmpty(), ("add to resources/Hints_CN.ts:\n" + list(missing)).constData());
}

void Hints::holdNoTextThatTheProgramDoesNotHave()
{
    const QSet<Key> unused =
        (catalogue("Hints_CN.ts") + catalogue("Hints_EN.ts")) - textsOfTheProgram();
    QVERIFY2(unused.isEmpty(), list(unused).constData());
}

void Hints::holdNoTextOfTheFixedCatalogue()
{
    const QSet<Key> both = catalogue("Hints_CN.ts") & catalogue("Linguist_CN.ts");
    QVERIFY2(both.isEmpty(), list(both).constData());
}

void Hints::areCompiledIn()
{
    QTranslator english;
    QVERIFY(english.load(":/Hints_EN.qm"));
    QTranslator chinese;
    QVERIFY(chinese.load(":/Hints_CN.qm"));
    QCOMPARE(chinese.translate("CommonTitleBar", "Close"), "关闭");
}

QTEST_GUILESS_MAIN(Hints)
#include "tst_hints.moc"
