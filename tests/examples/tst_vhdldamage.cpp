// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfolder.h"

#include <support/setting.h>
#include <support/testcase.h>

#include <QApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// Words, numbers, texts, blanks and single characters.
QStringList tokensOf(const QString &text)
{
    static const QRegularExpression token(
        QStringLiteral("\\w+|\"[^\"\n]*\"|--[^\n]*|\\s+|[^\\w\\s]"));
    QStringList tokens;
    QRegularExpressionMatchIterator matches = token.globalMatch(text);
    while (matches.hasNext())
        tokens += matches.next().captured();
    return tokens;
}

/// Deletes, repeats or replaces a few tokens, or cuts the text off.
QString damaged(const QString &text, QRandomGenerator *random)
{
    QStringList tokens = tokensOf(text);
    const auto anyToken = [&] { return random->bounded(tokens.size()); };
    const int count = 1 + random->bounded(3);
    for (int i = 0; i < count && tokens.size() > 1; ++i) {
        const int place = anyToken();
        switch (random->bounded(8)) {
        case 0:
        case 1:
        case 2:
            tokens.removeAt(place);
            break;
        case 3:
            tokens.insert(place, tokens[place]);
            break;
        case 4:
            tokens = tokens.mid(0, place + 1);
            break;
        default:
            tokens[place] = tokens[anyToken()];
        }
    }
    return tokens.join(QString());
}

} // namespace

/// Damaged variants of the designs: each is read, or an error says why not, in a short time.
/// TARN_DAMAGE_SEED and TARN_DAMAGE_COUNT (variants of each design) choose other variants.
class TestVhdlDamage : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void damageIsReadOrReported_data();
    void damageIsReadOrReported();
};

void TestVhdlDamage::damageIsReadOrReported_data()
{
    QTest::addColumn<QString>("design");
    const QStringList designs =
        QDir(TARN_VHDL_DESIGNS_DIR).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QVERIFY(designs.size() >= 20);
    for (const QString &design : designs)
        QTest::newRow(qPrintable(design)) << design;
}

void TestVhdlDamage::damageIsReadOrReported()
{
    QFETCH(QString, design);
    const QDir source(QStringLiteral(TARN_VHDL_DESIGNS_DIR "/") + design);
    QRandomGenerator random(TarnTest::setting("TARN_DAMAGE_SEED", 1));
    const unsigned count = TarnTest::setting("TARN_DAMAGE_COUNT", 1);
    for (unsigned variant = 0; variant < count; ++variant) {
        QTemporaryDir copy;
        QStringList files;
        QDirIterator entries(source.path(), QDir::Files, QDirIterator::Subdirectories);
        while (entries.hasNext())
            files += source.relativeFilePath(entries.next());
        files.sort();
        const QStringList texts = files.filter(QRegularExpression(QStringLiteral("\\.(vhd|s?v)$")));
        const QString victim = texts[random.bounded(texts.size())];
        QString changed;
        for (const QString &file : qAsConst(files)) {
            const QString path = copy.filePath(file);
            QDir().mkpath(QFileInfo(path).path());
            QByteArray text = TarnTest::readFile(source.filePath(file));
            if (file == victim) {
                changed = damaged(QString::fromUtf8(text), &random);
                text = changed.toUtf8();
            }
            TarnTest::writeFile(path, text);
        }
        QElapsedTimer timer;
        timer.start();
        const TarnTest::Outcome outcome = TarnTest::openFolder(QDir(copy.path()));
        const QString what = QStringLiteral("variant %1 of %2, %3 ms:\n%4\n%5")
                                 .arg(variant)
                                 .arg(victim)
                                 .arg(timer.elapsed())
                                 .arg(outcome.messages.join('\n'), changed);
        const bool isReported =
            !outcome.messages.filter(QRegularExpression(QStringLiteral("^ERROR: "))).isEmpty();
        QVERIFY2(outcome.netlist || isReported || outcome.tops.size() != 1, qPrintable(what));
        QVERIFY2(timer.elapsed() < 20000, qPrintable(what));
    }
}

TARN_TEST_MAIN(TestVhdlDamage)
#include "tst_vhdldamage.moc"
