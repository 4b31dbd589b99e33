// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "optionsdialog.h"

#include <te/designmanager.h>
#include <te/teconstants.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>

namespace Workbench {

namespace {

QStringList linesOf(const QPlainTextEdit *edit)
{
    QStringList lines;
    const QStringList entered = edit->toPlainText().split(QLatin1Char('\n'));
    for (const QString &line : entered) {
        if (!line.trimmed().isEmpty())
            lines.append(line.trimmed());
    }
    return lines;
}

QPlainTextEdit *createListEdit(const QString &name, QWidget *parent)
{
    auto *edit = new QPlainTextEdit(parent);
    edit->setObjectName(name);
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(edit->fontMetrics().lineSpacing() * 5);
    return edit;
}

} // namespace

OptionsDialog::OptionsDialog(TE::DesignManager *design, QWidget *parent)
    : QDialog(parent)
    , m_design(design)
    , m_includePaths(createListEdit(QStringLiteral("includePaths"), this))
    , m_standard(new QComboBox(this))
    , m_vhdlStandard(new QComboBox(this))
    , m_tool(new QComboBox(this))
    , m_timeout(new QSpinBox(this))
    , m_macros(createListEdit(QStringLiteral("macros"), this))
    , m_libraryFiles(createListEdit(QStringLiteral("libraryFiles"), this))
    , m_libraryFolders(createListEdit(QStringLiteral("libraryFolders"), this))
    , m_device(new QLineEdit(this))
    , m_problem(new QLabel(this))
{
    setWindowTitle(tr("Project Options"));
    m_standard->setObjectName(QStringLiteral("standard"));
    for (const char *standard : TE::OPT::VerilogStandards)
        m_standard->addItem(QLatin1String(standard));
    m_vhdlStandard->setObjectName(QStringLiteral("vhdlStandard"));
    for (const char *standard : TE::OPT::VhdlStandards)
        m_vhdlStandard->addItem(QLatin1String(standard));
    m_tool->setObjectName(QStringLiteral("tool"));
    for (const char *tool : TE::OPT::SynthesisTools)
        m_tool->addItem(QLatin1String(tool));
    m_timeout->setObjectName(QStringLiteral("timeout"));
    m_timeout->setRange(1, TE::OPT::LongestTimeout);
    m_timeout->setSuffix(tr(" s"));
    m_device->setObjectName(QStringLiteral("device"));
    m_problem->setObjectName(QStringLiteral("problem"));
    m_problem->setStyleSheet(QStringLiteral("QLabel { color: red }"));
    m_problem->hide();
    createForm();
    load();
}

void OptionsDialog::createForm()
{
    auto *buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &OptionsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &OptionsDialog::reject);

    auto *form = new QFormLayout(this);
    form->addRow(tr("Verilog standard:"), m_standard);
    form->addRow(tr("VHDL standard:"), m_vhdlStandard);
    form->addRow(tr("Synthesis tool:"), m_tool);
    form->addRow(tr("Time to read the netlist:"), m_timeout);
    form->addRow(tr("Device:"), m_device);
    form->addRow(tr("Include paths, one per line:"), m_includePaths);
    form->addRow(tr("Macros, one per line:"), m_macros);
    form->addRow(tr("Library files, one per line:"), m_libraryFiles);
    form->addRow(tr("Library folders, one per line:"), m_libraryFolders);
    form->addRow(m_problem);
    form->addRow(buttons);
    resize(600, sizeHint().height());
}

void OptionsDialog::load()
{
    const auto value = [this](const char *name) {
        return m_design->getOptionValue(QLatin1String(name));
    };
    const auto lines = [](const QStringList &list) { return list.join(QLatin1Char('\n')); };
    m_standard->setCurrentText(value(TE::OPT::Verilog_Standard).toString());
    m_vhdlStandard->setCurrentText(value(TE::OPT::VHDL_Standard).toString());
    m_tool->setCurrentText(value(TE::OPT::SYNTHESIZE_TOOL).toString());
    m_timeout->setValue(value(TE::OPT::EXTRACTION_TIMEOUT).toInt());
    m_includePaths->setPlainText(lines(value(TE::OPT::INCLUDEPATH).toStringList()));
    m_macros->setPlainText(lines(m_design->project().macros));
    m_libraryFiles->setPlainText(lines(m_design->project().libraryFiles));
    m_libraryFolders->setPlainText(lines(m_design->project().libraryFolders));
    m_device->setText(m_design->project().device.deviceName);
}

void OptionsDialog::accept()
{
    const QStringList macros = linesOf(m_macros);
    if (!m_design->setMacros(macros) && m_design->project().macros != macros) {
        m_problem->setText(tr("Write a macro as NAME or NAME=VALUE."));
        m_problem->show();
        return;
    }
    m_design->setOptionValue(QLatin1String(TE::OPT::Verilog_Standard), m_standard->currentText());
    m_design->setOptionValue(QLatin1String(TE::OPT::VHDL_Standard), m_vhdlStandard->currentText());
    m_design->setOptionValue(QLatin1String(TE::OPT::SYNTHESIZE_TOOL), m_tool->currentText());
    m_design->setOptionValue(QLatin1String(TE::OPT::EXTRACTION_TIMEOUT), m_timeout->value());
    m_design->setOptionValue(QLatin1String(TE::OPT::INCLUDEPATH), linesOf(m_includePaths));
    m_design->setLibraryFiles(linesOf(m_libraryFiles));
    m_design->setLibraryFolders(linesOf(m_libraryFolders));
    DEV::DeviceArg device = m_design->project().device;
    device.deviceName = m_device->text().trimmed();
    m_design->setDevice(device);
    QDialog::accept();
}

} // namespace Workbench
