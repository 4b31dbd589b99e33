// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "exampleproject.h"
#include "wavenames.h"

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <netweir/hierachy.h>
#include <netweir/netlisttext.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <support/files.h>
#include <support/testcase.h>
#include <te/designmanager.h>
#include <te/taskengine.h>
#include <te/teconstants.h>
#include <view/tarnview.h>
#include <view/tarnview_p.h>

#include <QApplication>
#include <QHash>
#include <QMessageBox>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace TarnTest;
using NETWEIR::Hierachy;
using NETWEIR::RtlNet;
using NETWEIR::RtlNetBus;
using NETWEIR::RtlNetlist;
using TARN::SignalItem;

namespace {

TE::DesignManager *designManager()
{
    return TE::TaskEngine::instance()->designManager();
}

/// The netlist of the open project, as the editor reads it; null with @p messages when it fails.
std::unique_ptr<RtlNetlist> readDesign(QStringList *tops, QStringList *messages)
{
    QMap<QString, QVariant> info = designManager()->getSourceFileInfo();
    QStringList modules;
    NETWEIR::catchRtlModules(*tops, modules, *messages, info, nullptr);
    RtlNetlist *netlist = nullptr;
    NETWEIR::catchRtlNetsWithProgressDialog(&netlist, *messages, nullptr);
    return std::unique_ptr<RtlNetlist>(netlist);
}

/// The faults in the signals of a configuration, one line each.
class SignalCheck
{
public:
    explicit SignalCheck(const RtlNetlist &netlist)
        : m_netlist(netlist)
    {
        const QList<RtlNetBus *> buses = netlist.top()->netbusesIncludeSub();
        for (const RtlNetBus *bus : buses)
            m_buses.insert(bus->fullBusName(), bus);
        const QList<RtlNet *> singles = netlist.top()->singleNetsIncludeSub();
        for (const RtlNet *net : singles)
            m_singles.insert(net->fullPathName());
    }

    QString problems(const TARN::TarnCore &core)
    {
        m_problems.clear();
        for (const TARN::ProbeIn *port : core.probeIns) {
            for (const SignalItem &signal : port->signals)
                checkSignal(signal, &RtlNet::excludedForProbeIn);
        }
        for (const TARN::ProbeOut *port : core.probeOuts) {
            for (const SignalItem &signal : port->signals)
                checkSignal(signal, &RtlNet::excludedForProbeOut);
        }
        return m_problems.join('\n');
    }

private:
    using Mark = bool (RtlNet::*)() const;

    void checkSignal(const SignalItem &signal, Mark mark)
    {
        if (signal.members.isEmpty()) {
            if (!m_singles.contains(signal.name))
                m_problems.append("no single net: " + signal.name);
            checkNet(signal.name, mark);
            return;
        }
        QStringList members;
        for (const SignalItem &member : signal.members) {
            members.append(member.name);
            checkNet(member.name, mark);
        }
        QStringList nets;
        if (const RtlNetBus *bus = m_buses.value(signal.name)) {
            for (const RtlNet *net : bus->nets())
                nets.append(net->fullPathName());
        }
        if (members != nets)
            m_problems.append("no such bus: " + signal.name);
    }

    void checkNet(const QString &name, Mark mark)
    {
        const RtlNet *net = m_netlist.findNet(name);
        if (!net)
            m_problems.append("no net: " + name);
        else if ((net->*mark)())
            m_problems.append("not allowed: " + name);
    }

    const RtlNetlist &m_netlist;
    QHash<QString, const RtlNetBus *> m_buses;
    QSet<QString> m_singles;
    QStringList m_problems;
};

/// Closes every modal window except the reader's progress dialog, which appears on slow machines
/// only.
class WindowGuard
{
public:
    WindowGuard()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { closeWindow(); });
        m_timer.start(20);
    }

    /// Titles and texts of the closed windows, one line each.
    QString closed() const { return m_closed.join('\n'); }

private:
    void closeWindow()
    {
        QWidget *window = QApplication::activeModalWidget();
        if (!window || qobject_cast<QProgressDialog *>(window))
            return;
        const auto *box = qobject_cast<QMessageBox *>(window);
        m_closed.append(window->windowTitle() +
                        (box ? ": " + box->text() + '\n' + box->detailedText() : QString()));
        window->close();
    }

    QTimer m_timer;
    QStringList m_closed;
};

/// The VHDL files of the motor drive by libraries, with copies in @p folder of those that GHDL
/// would not show as a whole: the wave file has nothing of a case generate statement.
QMap<QString, QStringList> vhdlForWaves(const TE::Project &project, const QString &folder)
{
    QMap<QString, QStringList> libraries;
    for (const TE::ProjectSource &source : project.sources) {
        if (source.enabled && source.type == TE::VhdlFile)
            libraries[source.library].append(source.path);
    }
    const QString original = examplePath("motordrive", "rtl/modulator.vhd");
    QString text = QString::fromUtf8(readFile(original));
    static const QRegularExpression first("case MODULATION generate\\s+when Sine =>");
    text.replace(first, "if MODULATION = Sine generate")
        .replace("when SixStep =>", "else generate");
    writeFile(folder + "/modulator.vhd", text.toUtf8());
    libraries["work"].replaceInStrings(original, folder + "/modulator.vhd");
    return libraries;
}

const Hierachy *instanceOf(const Hierachy *parent, const QString &module)
{
    for (const Hierachy *child : parent->children()) {
        if (child->moduleName() == module)
            return child;
    }
    return nullptr;
}

} // namespace

/// The netlists of the bundled examples, and their configuration files.
class TestExampleDesign : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void configurationFitsTheDesign_data() { addExamples(); }
    void configurationFitsTheDesign();
    void wrongSignalsAreNoticed();
    void configurationIsSavedUnchanged_data() { addExamples(); }
    void configurationIsSavedUnchanged();
    void motorDriveGivesItsNetlist();
    void motorDriveHasTheNetsThatSimulatorsShow();

private:
    static void addExamples();
};

void TestExampleDesign::cleanup()
{
    designManager()->closeProject();
    TestCase::cleanup();
}

void TestExampleDesign::addExamples()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : exampleNames())
        QTest::newRow(qPrintable(name)) << name;
}

void TestExampleDesign::configurationFitsTheDesign()
{
    QFETCH(QString, name);
    const TE::Project project = exampleProject(name);
    designManager()->setProject(project);
    QStringList tops;
    QStringList messages;
    std::unique_ptr<RtlNetlist> netlist = readDesign(&tops, &messages);
    QVERIFY2(netlist, qPrintable(messages.join('\n')));
    QCOMPARE(messages.filter(QRegularExpression("^ERROR")), QStringList());
    QCOMPARE(tops, QStringList{project.options.value(TE::OPT::TOPMODULE).toString()});
    QVERIFY(!netlist->usesJtagPrimitive());

    TARN::private_impl::TarnViewPrivate document(nullptr);
    bool ok = false;
    QString error;
    document.cores = TARN::readTARNConfigFromXml(examplePath(name, name + ".tarn"), &ok, &error);
    QVERIFY2(ok, qPrintable(error));
    SignalCheck check(*netlist);
    for (const TARN::TarnCore *core : qAsConst(document.cores)) {
        QCOMPARE(core->module, netlist->top()->instName());
        QCOMPARE(check.problems(*core), QString());
    }

    document.setNlsData(netlist.release());
    QString errors;
    QVERIFY2(document.check(&errors), qPrintable(errors));
}

/// The comparison above can fail.
void TestExampleDesign::wrongSignalsAreNoticed()
{
    designManager()->setProject(exampleProject("sensorhub"));
    QStringList tops;
    QStringList messages;
    const std::unique_ptr<RtlNetlist> netlist = readDesign(&tops, &messages);
    QVERIFY2(netlist, qPrintable(messages.join('\n')));

    const auto net = [](const QString &name) {
        SignalItem item;
        item.name = name;
        item.kind = SignalItem::Net;
        return item;
    };
    SignalItem bus = net("hub_top/sample[12:0]");
    bus.members = {net("hub_top/sample[12]")};
    TARN::TarnCore core(0);
    core.addProbeIn(0);
    core.probeIns.first()->signals = {net("hub_top/u_tx_fifo/mem"), net("hub_top/gone"), bus};
    core.addProbeOut(0);
    core.probeOuts.first()->signals = {net("hub_top/rx_valid"), net("hub_top/dbg_duty[0]")};
    QCOMPARE(SignalCheck(*netlist).problems(core),
             QStringLiteral("not allowed: hub_top/u_tx_fifo/mem\n"
                            "no single net: hub_top/gone\n"
                            "no net: hub_top/gone\n"
                            "no net: hub_top/sample[12]\n"
                            "no such bus: hub_top/sample[12:0]\n"
                            "not allowed: hub_top/rx_valid\n"
                            "no single net: hub_top/dbg_duty[0]"));
}

void TestExampleDesign::configurationIsSavedUnchanged()
{
    QFETCH(QString, name);
    designManager()->setProject(exampleProject(name));
    QTemporaryDir folder;
    const QString copy = folder.filePath("copy.tarn");
    const QByteArray content = readFile(examplePath(name, name + ".tarn"));
    writeFile(copy, content);

    const WindowGuard guard;
    TARN::TarnView view;
    QString error;
    const bool opened = view.open(copy, QString(), &error);
    QVERIFY2(opened, qPrintable(error + guard.closed()));
    const bool saved = view.save();
    QVERIFY2(saved, qPrintable(guard.closed()));
    QCOMPARE(guard.closed(), QString());
    QCOMPARE(readFile(copy), content);
}

/// The expected netlist is written by hand.
void TestExampleDesign::motorDriveGivesItsNetlist()
{
    designManager()->setProject(exampleProject("motordrive"));
    QStringList tops;
    QStringList messages;
    const std::unique_ptr<RtlNetlist> netlist = readDesign(&tops, &messages);
    QVERIFY2(netlist, qPrintable(messages.join('\n')));
    const QString expected = QString::fromUtf8(readFile(TARN_MOTORDRIVE_NETLIST));
    QCOMPARE(netlistText(netlist->top()).split('\n'), expected.split('\n'));
}

/// Each half is simulated on its own, with the values that the other half hands down.
void TestExampleDesign::motorDriveHasTheNetsThatSimulatorsShow()
{
    const TE::Project project = exampleProject("motordrive");
    designManager()->setProject(project);
    QStringList tops;
    QStringList messages;
    const std::unique_ptr<RtlNetlist> netlist = readDesign(&tops, &messages);
    QVERIFY2(netlist, qPrintable(messages.join('\n')));

    QTemporaryDir folder;
    QString error;
    const QMap<QString, QStringList> libraries = vhdlForWaves(project, folder.path());
    const WaveNames drive = vhdlWaveNames(libraries, "motor_top", {}, &error);
    QCOMPARE(error, QString());
    QCOMPARE(waveDifferences(netlist->top(), drive, {"pwm_core"}), QString());

    const QStringList arguments{examplePath("motordrive", "rtl/pwm_core.sv"),
                                examplePath("motordrive", "tb/dead_time_model.sv"),
                                "-I" + examplePath("motordrive", "include"),
                                "-DGATE_ON=1'b1",
                                "-Ppwm_core.CHANNELS=3",
                                "-Ppwm_core.DUTY_BITS=10",
                                "-Ppwm_core.DEAD_CLOCKS=25"};
    const WaveNames modulator = verilogWaveNames(arguments, "pwm_core", &error);
    QCOMPARE(error, QString());
    const Hierachy *core = instanceOf(netlist->top(), "pwm_core");
    QVERIFY(core);
    QCOMPARE(waveDifferences(core, modulator, {"dead_time"}), QString());

    const WaveNames deadTime = vhdlWaveNames(libraries, "dead_time", {"-gCLOCKS=25"}, &error);
    QCOMPARE(error, QString());
    QCOMPARE(core->children().size(), 3);
    for (const Hierachy *channel : core->children())
        QCOMPARE(waveDifferences(channel, deadTime, {}), QString());
}

TARN_TEST_MAIN(TestExampleDesign)
#include "tst_exampledesign.moc"
