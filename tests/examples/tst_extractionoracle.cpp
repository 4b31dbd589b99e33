// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/hierachy.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <support/files.h>
#include <support/testcase.h>
#include <te/designinfo.h>
#include <te/fileinfo.h>
#include <te/project.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <memory>

using namespace NETWEIR;

namespace {

template <typename Item>
QString marks(const Item &item)
{
    QString text;
    if (item.excludedForProbeIn())
        text += QStringLiteral(" in");
    if (item.excludedForProbeOut())
        text += QStringLiteral(" out");
    return text;
}

template <typename Item>
QString marksOrDash(const Item &item)
{
    const QString text = marks(item);
    return text.isEmpty() ? QStringLiteral(" -") : text;
}

/// The node and everything below it, one line each; the bits of a bus on a separate line.
void print(const Hierachy *node, const QString &indent, QString *text)
{
    *text += indent + "node " + node->instName() + " : " + node->moduleName() + '\n';
    const QString inner = indent + "    ";
    for (const RtlNet *net : node->nets())
        *text += inner + "net " + net->name() + marksOrDash(*net) + '\n';
    for (const RtlNetBus *bus : node->buses()) {
        *text += inner + "bus " + bus->BusName() + marksOrDash(*bus) + '\n' + inner + "   ";
        for (const RtlNet *bit : bus->nets())
            *text += ' ' + bit->name() + marks(*bit);
        *text += '\n';
    }
    for (const Hierachy *child : node->children())
        print(child, inner, text);
}

QString printed(const RtlNetlist &netlist)
{
    QString text = netlist.usesJtagPrimitive() ? QStringLiteral("jtag\n") : QString();
    print(netlist.top(), QString(), &text);
    return text;
}

/// Full names are those of the nodes above joined with '/', and each is found.
bool namesAreConsistent(const RtlNetlist &netlist, const Hierachy *node, const QString &path)
{
    for (const RtlNet *net : node->nets()) {
        if (net->fullPathName() != path + '/' + net->name() ||
            netlist.findNet(net->fullPathName()) != net)
            return false;
    }
    for (const RtlNetBus *bus : node->buses()) {
        if (bus->fullBusName() != path + '/' + bus->BusName())
            return false;
        for (const RtlNet *bit : bus->nets()) {
            if (bit->fullPathName() != path + '/' + bit->name() ||
                netlist.findNet(bit->fullPathName()) != bit)
                return false;
        }
    }
    for (const Hierachy *child : node->children()) {
        if (child->parent() != node ||
            !namesAreConsistent(netlist, child, path + '/' + child->instName()))
            return false;
    }
    return true;
}

QMap<QString, QVariant> designOf(const QString &path)
{
    const QVariantMap file{{TE::DesignInfo::Path, path},
                           {TE::DesignInfo::Type, TE::fileTypeOf(path)}};
    return {{TE::DesignInfo::Top, "top"}, {TE::DesignInfo::Files, QVariantList{file}}};
}

} // namespace

/// Small designs, each with its expected netlist, which is written by hand: NAME.v or NAME.sv with
/// NAME.net.
class TestExtractionOracle : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void designGivesItsNetlist_data();
    void designGivesItsNetlist();
};

void TestExtractionOracle::designGivesItsNetlist_data()
{
    QTest::addColumn<QString>("design");
    const QFileInfoList designs =
        QDir(TARN_NETLISTS_DIR).entryInfoList({"*.v", "*.sv"}, QDir::Files, QDir::Name);
    QVERIFY(!designs.isEmpty());
    for (const QFileInfo &design : designs)
        QTest::newRow(qPrintable(design.completeBaseName())) << design.filePath();
}

void TestExtractionOracle::designGivesItsNetlist()
{
    QFETCH(QString, design);
    QStringList tops;
    QStringList modules;
    QStringList messages;
    QMap<QString, QVariant> info = designOf(design);
    catchRtlModules(tops, modules, messages, info, nullptr);
    QVERIFY2(tops == QStringList{"top"}, qPrintable(tops.join(' ') + '\n' + messages.join('\n')));

    RtlNetlist *built = nullptr;
    catchRtlNetsWithProgressDialog(&built, messages, nullptr);
    const std::unique_ptr<RtlNetlist> netlist(built);
    QVERIFY2(netlist, qPrintable(messages.join('\n')));
    QVERIFY2(messages.filter(QRegularExpression("^ERROR")).isEmpty(),
             qPrintable(messages.join('\n')));

    const QFileInfo file(design);
    const QString expected =
        QString::fromUtf8(TarnTest::readFile(file.path() + '/' + file.completeBaseName() + ".net"));
    const QString actual = printed(*netlist);
    QVERIFY2(actual == expected, qPrintable("got:\n" + actual + "\nexpected:\n" + expected));
    QVERIFY(namesAreConsistent(*netlist, netlist->top(), netlist->top()->instName()));
}

TARN_TEST_MAIN(TestExtractionOracle)
#include "tst_extractionoracle.moc"
