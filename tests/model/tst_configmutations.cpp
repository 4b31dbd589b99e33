// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <model/configwriter.h>
#include <model/tarnconfig.h>
#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using TarnTest::writeFile;

namespace {

constexpr int Mutants = 4000;

/// Pieces that turn one meaning into another when they land in the right place.
const QList<QByteArray> Pieces = {"<",
                                  ">",
                                  "/>",
                                  "\"",
                                  "'",
                                  "&",
                                  "&amp;",
                                  "&#10;",
                                  "&#x1F600;",
                                  "<!--",
                                  "-->",
                                  "<![CDATA[",
                                  "]]>",
                                  "<?a b?>",
                                  "<!DOCTYPE a>",
                                  "]",
                                  " ",
                                  "\n",
                                  "\r\n",
                                  "\t",
                                  "=",
                                  "-",
                                  "0",
                                  "9",
                                  "index",
                                  "true",
                                  "false",
                                  "net",
                                  "bus",
                                  "kind=\"net\"",
                                  "enabled=\"true\"",
                                  "<Member name=\"m\"/>",
                                  "<Signal name=\"s\"/>",
                                  "</Signal>",
                                  "<ProbeIn index=\"1\"/>",
                                  "<Core index=\"1\"/>",
                                  "<Version>1.0</Version>",
                                  QByteArray(1, '\0'),
                                  "\xff",
                                  "\xc3\xa4",
                                  "\xef\xbb\xbf",
                                  "\xed\xa0\xbd"};

/// Puts a character in front of the next name. Most characters are allowed, so that files which are
/// read and written again are as common as refused ones.
void changeName(QByteArray *content, int from, QRandomGenerator *random)
{
    const QByteArray start = "name=\"";
    const int position = content->indexOf(start, from);
    if (position >= 0)
        content->insert(position + start.size(), char(random->bounded(1, 128)));
}

/// Changes @p content at a few places, the same for the same state of @p random.
QByteArray mutant(QByteArray content, QRandomGenerator *random)
{
    const int changes = random->bounded(1, 3);
    for (int i = 0; i < changes && !content.isEmpty(); ++i) {
        const int from = random->bounded(content.size());
        const int size = qMin(random->bounded(1, 40), content.size() - from);
        switch (random->bounded(12)) {
        case 0:
            content[from] = char(random->bounded(256));
            break;
        case 1:
            content.remove(from, size);
            break;
        case 2:
            content.insert(from, content.mid(from, size));
            break;
        case 3:
            content.insert(random->bounded(content.size()), content.mid(from, size));
            break;
        case 4:
            content.insert(from, Pieces.at(random->bounded(Pieces.size())));
            break;
        default:
            changeName(&content, from, random);
            break;
        }
    }
    return content;
}

QStringList *quietLines = nullptr;

/// Collects the debug lines instead of printing thousands of them.
void collectLine(QtMsgType, const QMessageLogContext &, const QString &line)
{
    quietLines->append(line);
}

} // namespace

/// Damages a configuration file in thousands of reproducible ways.
class TestConfigMutations : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void checkAndReaderAgreeAndAcceptedFilesComeBack_data();
    void checkAndReaderAgreeAndAcceptedFilesComeBack();

private:
    QString verdictProblem(const QByteArray &content, int *accepted);

    void renew(const QByteArray &content);

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("a.tarn"));
};

/// Writes a new file: some file systems wait for the disk when an old one is truncated.
void TestConfigMutations::renew(const QByteArray &content)
{
    QFile::remove(m_path);
    writeFile(m_path, content);
}

/// What is wrong with the treatment of @p content; empty when nothing is.
QString TestConfigMutations::verdictProblem(const QByteArray &content, int *accepted)
{
    renew(content);
    QStringList lines;
    quietLines = &lines;
    bool ok = false;
    QString error;
    const bool checked = TARN::checkTARNFile(m_path);
    const Cores cores(TARN::readTARNConfigFromXml(m_path, &ok, &error));
    if (checked != ok || ok != error.isEmpty() || (!ok && !cores.list.isEmpty()))
        return QStringLiteral("check and reader differ");
    if (!ok)
        return lines.contains(error) ? QString() : QStringLiteral("no reason on the debug stream");

    ++*accepted;
    TARN::ConfigWriter writer(cores.list);
    const QByteArray first = writer.content();
    if (!writer.errorText().isEmpty())
        return QStringLiteral("cannot be written: ") + writer.errorText();
    renew(first);
    const Cores copy(TARN::readTARNConfigFromXml(m_path, nullptr, nullptr));
    if (coresText(copy.list) != coresText(cores.list))
        return QStringLiteral("fields did not come back");
    return TARN::ConfigWriter(copy.list).content() == first
               ? QString()
               : QStringLiteral("the second writing differs");
}

void TestConfigMutations::checkAndReaderAgreeAndAcceptedFilesComeBack_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::newRow(QByteArray::number(seed).constData()) << seed;
}

void TestConfigMutations::checkAndReaderAgreeAndAcceptedFilesComeBack()
{
    QFETCH(quint32, seed);
    const Cores cores = sampleCores();
    const QByteArray original = TARN::ConfigWriter(cores.list).content();
    QRandomGenerator random(seed);
    int accepted = 0;
    for (int i = 0; i < Mutants / 4; ++i) {
        const QByteArray content = mutant(original, &random);
        const QtMessageHandler former = qInstallMessageHandler(collectLine);
        const QString problem = verdictProblem(content, &accepted);
        qInstallMessageHandler(former);
        QVERIFY2(problem.isEmpty(),
                 qPrintable(problem + QLatin1Char('\n') + QString::fromUtf8(content)));
    }
    // Both verdicts have to be common for the comparison to mean something.
    QVERIFY2(accepted > Mutants / 40 && accepted < Mutants / 5,
             qPrintable(QString::number(accepted)));
}

TARN_TEST_MAIN(TestConfigMutations)
#include "tst_configmutations.moc"
