// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "fakeproject.h"

#include <plugin/newfiledialog.h>
#include <support/files.h>
#include <support/windowfit.h>
#include <support/windowtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using TARN::NewFileDialog;
using namespace TarnTest;

namespace {

const QByteArray EmptyConfig = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<TARN_CONFIG>\n"
                               "    <Version>1.0</Version>\n"
                               "</TARN_CONFIG>\n";

/// While it lives, no file of this process can grow, as on a full disk.
class NoSpace
{
public:
    NoSpace()
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        rlimit none = m_limit;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~NoSpace() { setrlimit(RLIMIT_FSIZE, &m_limit); }
    NoSpace(const NoSpace &) = delete;
    NoSpace &operator=(const NoSpace &) = delete;

private:
    rlimit m_limit = {};
};

/// While it lives, root is an ordinary user. Does nothing for others.
class WithoutPrivileges
{
public:
    WithoutPrivileges()
    {
        if (m_user == 0 && seteuid(Nobody) != 0)
            qFatal("cannot change the user");
    }
    ~WithoutPrivileges()
    {
        if (seteuid(m_user) != 0)
            qFatal("cannot change the user back");
    }
    WithoutPrivileges(const WithoutPrivileges &) = delete;
    WithoutPrivileges &operator=(const WithoutPrivileges &) = delete;

private:
    static constexpr uid_t Nobody = 65534;

    uid_t m_user = geteuid();
};

constexpr QFile::Permissions ReadOnlyFolder =
    QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;

} // namespace

class TestNewFileDialog : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void formHoldsNamedWidgets();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void createInShowsPathOrHome();
    void checkBoxFollowsProject();
    void filePathTrimsOnlyTheWhole_data();
    void filePathTrimsOnlyTheWhole();
    void refusals_data();
    void refusals();
    void laterMessageReplacesEarlier();
    void createsFolderWithParents();
    void createsTrimmedFolder();
    void keepsWhiteSpaceInside();
    void cannotMakePathShowsFolderAsTyped();
    void sameNameTwiceIsRefused();
    void cannotCreateShowsSystemError();
    void unwritableFolderShowsSystemError();
    void placeholdersInNameStay();
    void neverWritesThroughDanglingLink();
    void fullDiskIsReportedAndLeavesNoFile();
    void writesExactBytes();
    void addsToProjectWhenChecked();
    void addsNothingWhenUnchecked();
    void projectThatWentIsNoCrash();
    void okAcceptsAndCancelRejects();
    void browseReplacesFolder();
    void cancelledBrowseKeepsFolder();
    void browsingSurvivesDeathOfTheDialog();
    void slashInNameMakesNoFolder();

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString info() const { return m_dialog->findChild<QLabel *>("labelInfo")->text(); }
    void make(const QString &folder, const QString &name);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<NewFileDialog> m_dialog;
};

void TestNewFileDialog::init()
{
    WindowTest::init();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_dialog.reset();
}

void TestNewFileDialog::make(const QString &folder, const QString &name)
{
    m_dialog = std::make_unique<NewFileDialog>(folder, nullptr);
    m_dialog->findChild<QLineEdit *>("editCreateIn")->setText(folder);
    m_dialog->findChild<QLineEdit *>("editName")->setText(name);
    m_dialog->show();
}

void TestNewFileDialog::formHoldsNamedWidgets()
{
    NewFileDialog dialog(path(""), nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("New TARN Config File"));
    QCOMPARE(dialog.size(), QSize(712, 138));
    QCOMPARE(dialog.findChild<QLabel *>("labelName")->text(), QStringLiteral("Name:"));
    QCOMPARE(dialog.findChild<QLineEdit *>("editName")->placeholderText(),
             QStringLiteral("Enter a name"));
    QCOMPARE(dialog.findChild<QLineEdit *>("editName")->text(), QString());
    QCOMPARE(dialog.findChild<QLabel *>("label")->text(), QStringLiteral(".tarn"));
    QCOMPARE(dialog.findChild<QLabel *>("labelCreateIn")->text(), QStringLiteral("Create in:"));
    QCOMPARE(dialog.findChild<QLineEdit *>("editCreateIn")->minimumWidth(), 500);
    QCOMPARE(dialog.findChild<QPushButton *>("btnBrowse")->text(), QStringLiteral("Browse..."));
    QCOMPARE(dialog.findChild<QCheckBox *>("checkBoxAddToCurrent")->text(),
             QStringLiteral("Add to current project"));
    QCOMPARE(dialog.findChild<QLabel *>("labelInfo")->styleSheet(),
             QStringLiteral("QLabel { color: red }"));
    QCOMPARE(dialog.findChild<QLabel *>("labelInfo")->text(), QString());
    QVERIFY(dialog.findChild<QDialogButtonBox *>("buttonBox"));
    const auto *grid = dialog.findChild<QGridLayout *>();
    QVERIFY(grid);
    const auto place = [&](const char *name) {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(grid->indexOf(dialog.findChild<QWidget *>(name)), &row, &column,
                              &rows, &columns);
        return QPoint(column + columns, row); // Behind the widget.
    };
    QCOMPARE(place("label"), place("editName") + QPoint(1, 0));
    QCOMPARE(place("editName").y(), place("labelName").y());
}

void TestNewFileDialog::nothingIsCutOff_data()
{
    FontSize::addSizes();
}

void TestNewFileDialog::nothingIsCutOff()
{
    QFETCH(double, points);
    const FontSize font(points);
    NewFileDialog dialog(m_dir->path(), nullptr);
    dialog.show();
    QCOMPARE(layoutFaults(&dialog), QString());
}

void TestNewFileDialog::createInShowsPathOrHome()
{
    NewFileDialog given(path("a"), nullptr);
    QCOMPARE(given.findChild<QLineEdit *>("editCreateIn")->text(),
             QDir::toNativeSeparators(path("a")));
    NewFileDialog empty(QString(), nullptr);
    QCOMPARE(empty.findChild<QLineEdit *>("editCreateIn")->text(),
             QDir::toNativeSeparators(QDir::homePath()));
}

void TestNewFileDialog::checkBoxFollowsProject()
{
    NewFileDialog without(path(""), nullptr);
    QVERIFY(!without.findChild<QCheckBox *>("checkBoxAddToCurrent")->isEnabled());
    QVERIFY(!without.findChild<QCheckBox *>("checkBoxAddToCurrent")->isChecked());

    FakeProject project;
    NewFileDialog with(path(""), nullptr);
    QVERIFY(with.findChild<QCheckBox *>("checkBoxAddToCurrent")->isEnabled());
    QVERIFY(with.findChild<QCheckBox *>("checkBoxAddToCurrent")->isChecked());
}

void TestNewFileDialog::filePathTrimsOnlyTheWhole_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "/a/b"
                           << "c"
                           << "/a/b/c.tarn";
    QTest::newRow("extension twice") << "/a"
                                     << "c.tarn"
                                     << "/a/c.tarn.tarn";
    QTest::newRow("folder starts with blanks") << " \t/a"
                                               << "c"
                                               << "/a/c.tarn";
    QTest::newRow("folder ends with blanks") << "/a  "
                                             << "c"
                                             << "/a  /c.tarn";
    QTest::newRow("name starts with blanks") << "/a"
                                             << "  c"
                                             << "/a/  c.tarn";
    QTest::newRow("name ends with blanks") << "/a"
                                           << "c  "
                                           << "/a/c  .tarn";
    QTest::newRow("folder ends with slash") << "/a/"
                                            << "c"
                                            << "/a//c.tarn";
    QTest::newRow("nothing") << ""
                             << ""
                             << "/.tarn";
}

void TestNewFileDialog::filePathTrimsOnlyTheWhole()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    QFETCH(QString, expected);
    make(folder, name);
    QCOMPARE(m_dialog->filePath(), expected);
}

void TestNewFileDialog::refusals_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    QTest::newRow("name first") << ""
                                << ""
                                << "Please enter a name.";
    QTest::newRow("no name") << "/tmp"
                             << ""
                             << "Please enter a name.";
    QTest::newRow("no folder") << ""
                               << "x"
                               << "Please enter a path.";
}

void TestNewFileDialog::refusals()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    QFETCH(QString, message);
    make(folder, name);
    m_dialog->accept();
    QCOMPARE(info(), message);
    QVERIFY(m_dialog->isVisible());
}

void TestNewFileDialog::laterMessageReplacesEarlier()
{
    make("", "");
    m_dialog->accept();
    QCOMPARE(info(), QStringLiteral("Please enter a name."));
    m_dialog->findChild<QLineEdit *>("editName")->setText("x");
    m_dialog->accept();
    QCOMPARE(info(), QStringLiteral("Please enter a path."));
}

void TestNewFileDialog::createsFolderWithParents()
{
    make(path("a/b c/d"), "x");
    m_dialog->accept();
    QCOMPARE(info(), QString());
    QCOMPARE(readFile(path("a/b c/d/x.tarn")), EmptyConfig);
}

void TestNewFileDialog::createsTrimmedFolder()
{
    make("  " + path("a"), "x");
    m_dialog->accept();
    QCOMPARE(info(), QString());
    QCOMPARE(QDir(path("")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("a"));
    QCOMPARE(readFile(path("a/x.tarn")), EmptyConfig);
    QVERIFY(!QFileInfo::exists("  " + path("a")));
}

void TestNewFileDialog::keepsWhiteSpaceInside()
{
    make(path("a "), " x ");
    m_dialog->accept();
    QCOMPARE(readFile(path("a / x .tarn")), EmptyConfig);
}

void TestNewFileDialog::cannotMakePathShowsFolderAsTyped()
{
    writeFile(path("file"), "x");
    const QString typed = "  " + path("file/sub/");
    make(typed, "x");
    m_dialog->accept();
    QCOMPARE(info(), "Cannot make the path " + typed + ".");
    QVERIFY(m_dialog->isVisible());
}

void TestNewFileDialog::sameNameTwiceIsRefused()
{
    writeFile(path("x.tarn"), "mine");
    make(path("sub/../"), "x");
    m_dialog->accept();
    QCOMPARE(info(), "File " + path("x.tarn") + " already exists.");
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(readFile(path("x.tarn")), QByteArray("mine"));
}

void TestNewFileDialog::cannotCreateShowsSystemError()
{
    FakeProject project;
    const QString name(300, QLatin1Char('n'));
    make(path(""), name);
    m_dialog->accept();
    QCOMPARE(info(),
             "Can not create file " + QDir::cleanPath(path(name)) + ".tarn\nFile name too long");
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(project.files, QStringList());
}

void TestNewFileDialog::unwritableFolderShowsSystemError()
{
    make(path(""), "x");
    QVERIFY(QFile::setPermissions(path(""), ReadOnlyFolder));
    {
        WithoutPrivileges plainUser;
        m_dialog->accept();
    }
    QVERIFY(QFile::setPermissions(path(""), ReadOnlyFolder | QFile::WriteOwner));
    QCOMPARE(info(), "Can not create file " + path("x.tarn") + "\nPermission denied");
}

void TestNewFileDialog::placeholdersInNameStay()
{
    const QString name = "%1 %2 " + QString(300, QLatin1Char('n'));
    make(path(""), name);
    m_dialog->accept();
    QCOMPARE(info(),
             "Can not create file " + QDir::cleanPath(path(name)) + ".tarn\nFile name too long");
}

void TestNewFileDialog::neverWritesThroughDanglingLink()
{
    QVERIFY(QFile::link(path("gone"), path("x.tarn")));
    make(path(""), "x");
    m_dialog->accept();
    QCOMPARE(info(), "Can not create file " + path("x.tarn") + "\nFile exists");
    QVERIFY(!QFileInfo::exists(path("gone")));
}

void TestNewFileDialog::fullDiskIsReportedAndLeavesNoFile()
{
    FakeProject project;
    make(path(""), "x");
    {
        NoSpace noSpace;
        m_dialog->accept();
    }
    QCOMPARE(info(), "Can not create file " + path("x.tarn") + "\nFile too large");
    QVERIFY(m_dialog->isVisible());
    QVERIFY(!QFileInfo::exists(path("x.tarn")));
    QCOMPARE(project.files, QStringList());
}

void TestNewFileDialog::writesExactBytes()
{
    make(path(""), "x");
    m_dialog->accept();
    QCOMPARE(readFile(path("x.tarn")), EmptyConfig);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
}

void TestNewFileDialog::addsToProjectWhenChecked()
{
    FakeProject project;
    make(path("a/../"), "x");
    m_dialog->accept();
    QCOMPARE(project.files, QStringList(path("x.tarn")));
    QCOMPARE(readFile(path("x.tarn")), EmptyConfig);
}

void TestNewFileDialog::addsNothingWhenUnchecked()
{
    FakeProject project;
    make(path(""), "x");
    m_dialog->findChild<QCheckBox *>("checkBoxAddToCurrent")->setChecked(false);
    m_dialog->accept();
    QCOMPARE(project.files, QStringList());
    QCOMPARE(readFile(path("x.tarn")), EmptyConfig);
}

void TestNewFileDialog::projectThatWentIsNoCrash()
{
    {
        FakeProject project;
        make(path(""), "x");
    }
    m_dialog->accept();
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
}

void TestNewFileDialog::okAcceptsAndCancelRejects()
{
    make(path(""), "x");
    auto *buttons = m_dialog->findChild<QDialogButtonBox *>("buttonBox");
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Cancel)->click();
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QVERIFY(!QFileInfo::exists(path("x.tarn")));

    m_dialog->show();
    buttons->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QVERIFY(QFileInfo::exists(path("x.tarn")));
}

void TestNewFileDialog::browseReplacesFolder()
{
    QVERIFY(QDir(path("")).mkpath("a/b"));
    make(path("a"), "x");
    QString shown;
    script().expectDialog("QFileDialog", "Select Directory", [&](QDialog *dialog) {
        auto *files = qobject_cast<QFileDialog *>(dialog);
        shown = files->directory().absolutePath();
        QCOMPARE(files->parentWidget(), m_dialog.get());
        QVERIFY(files->testOption(QFileDialog::ShowDirsOnly));
        files->selectFile(path("a/b"));
        files->findChild<QLineEdit *>("fileNameEdit")->setText(path("a/b"));
        static_cast<QDialog *>(files)->accept();
    });
    m_dialog->findChild<QPushButton *>("btnBrowse")->click();
    QCOMPARE(shown, path("a"));
    QCOMPARE(m_dialog->findChild<QLineEdit *>("editCreateIn")->text(), path("a/b"));
}

void TestNewFileDialog::cancelledBrowseKeepsFolder()
{
    make(path("a"), "x");
    script().expectDialog("QFileDialog", "Select Directory",
                          [](QDialog *dialog) { dialog->reject(); });
    m_dialog->onBrowse();
    QCOMPARE(m_dialog->findChild<QLineEdit *>("editCreateIn")->text(), path("a"));
}

void TestNewFileDialog::browsingSurvivesDeathOfTheDialog()
{
    make(path("a"), "x");
    script().expectDialog("QFileDialog", "Select Directory", [&](QDialog *) { m_dialog.reset(); });
    m_dialog->onBrowse();
    QVERIFY(!m_dialog);
}

void TestNewFileDialog::slashInNameMakesNoFolder()
{
    make(path(""), "a/b");
    m_dialog->accept();
    QCOMPARE(info(), "Can not create file " + path("a/b.tarn") + "\nNo such file or directory");
    QVERIFY(!QFileInfo::exists(path("a")));
}

TARN_TEST_MAIN(TestNewFileDialog)
#include "tst_newfiledialog.moc"
