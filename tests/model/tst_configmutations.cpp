// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configmutant.h"
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
