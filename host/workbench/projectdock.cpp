// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "projectdock.h"

#include <te/designmanager.h>
#include <te/teconstants.h>

#include <QDir>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Workbench {

namespace {

constexpr int PathRole = Qt::UserRole;

/// @p path, relative to @p folder when it is below it.
QString shortPath(const QString &folder, const QString &path)
{
    const QString relative = QDir(folder).relativeFilePath(path);
    return QDir::toNativeSeparators(relative.startsWith(QLatin1String("..")) ? path : relative);
}

/// The type of @p source, and its library unless that is the usual one: "VHDL (dsp)".
QString typeText(const TE::ProjectSource &source)
{
    const QString type = TE::fileTypeName(source.type);
    if (source.type != TE::VhdlFile || source.library == QLatin1String(TE::DefaultVhdlLibrary))
        return type;
    return QStringLiteral("%1 (%2)").arg(type, source.library);
}

bool hasVhdl(const TE::Project &project)
{
    return std::any_of(project.sources.begin(), project.sources.end(),
                       [](const TE::ProjectSource &source) { return source.type == TE::VhdlFile; });
}

} // namespace

ProjectDock::ProjectDock(TE::DesignManager *design, QWidget *parent)
    : QDockWidget(parent)
    , m_design(design)
    , m_files(new QTreeWidget)
    , m_top(new QLineEdit)
    , m_options(new QLabel)
{
    setObjectName(QStringLiteral("projectDock"));
    createFiles();
    m_top->setObjectName(QStringLiteral("topModule"));
    m_top->setPlaceholderText(tr("found automatically"));
    m_options->setObjectName(QStringLiteral("options"));
    m_options->setTextFormat(Qt::PlainText);
    m_options->setWordWrap(true);

    auto *content = new QWidget(this);
    auto *form = new QFormLayout;
    form->addRow(tr("Top module:"), m_top);
    auto *layout = new QVBoxLayout(content);
    layout->addWidget(m_files, 1);
    layout->addLayout(form);
    layout->addWidget(m_options);
    setWidget(content);

    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &ProjectDock::update);
    connect(design, &TE::DesignManager::projectChanged, &m_timer, qOverload<>(&QTimer::start));
    connect(m_top, &QLineEdit::editingFinished, this, &ProjectDock::onTopEdited);
    update();
}

void ProjectDock::createFiles()
{
    m_files->setObjectName(QStringLiteral("files"));
    m_files->setHeaderLabels({tr("File"), tr("Type")});
    m_files->setRootIsDecorated(false);
    m_files->setUniformRowHeights(true);
    m_files->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_files->setTextElideMode(Qt::ElideMiddle);
    m_files->header()->setStretchLastSection(false);
    m_files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_files->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    connect(m_files, &QTreeWidget::itemChanged, this, &ProjectDock::onItemChanged);
    connect(m_files, &QTreeWidget::itemSelectionChanged, this, &ProjectDock::selectionChanged);
    connect(m_files, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem *item) {
        Q_EMIT fileActivated(item->data(0, PathRole).toString());
    });
}

QStringList ProjectDock::selectedFiles() const
{
    QStringList paths;
    const QList<QTreeWidgetItem *> items = m_files->selectedItems();
    for (const QTreeWidgetItem *item : items)
        paths.append(item->data(0, PathRole).toString());
    return paths;
}

void ProjectDock::setFilesMenu(QMenu *menu)
{
    m_files->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_files, &QWidget::customContextMenuRequested, menu, [this, menu](const QPoint &pos) {
        menu->popup(m_files->viewport()->mapToGlobal(pos));
    });
}

void ProjectDock::update()
{
    const bool isOpen = m_design->hasProject();
    widget()->setEnabled(isOpen);
    setWindowTitle(isOpen ? tr("Project %1").arg(m_design->project().name) : tr("Project"));
    updateFiles(m_design->project());
    updateOptions();
    Q_EMIT selectionChanged();
}

void ProjectDock::updateFiles(const TE::Project &project)
{
    const QStringList selected = selectedFiles();
    const QSet<QString> wasSelected(selected.begin(), selected.end());
    const QSignalBlocker blocker(m_files);
    QList<QTreeWidgetItem *> items;
    for (const TE::ProjectSource &source : project.sources) {
        auto *item =
            new QTreeWidgetItem({shortPath(project.workingDir, source.path), typeText(source)});
        item->setCheckState(0, source.enabled ? Qt::Checked : Qt::Unchecked);
        item->setData(0, PathRole, source.path);
        item->setToolTip(0, QDir::toNativeSeparators(source.path));
        if (source.type == TE::VhdlFile)
            item->setToolTip(1, tr("VHDL library: %1").arg(source.library));
        items.append(item);
    }
    m_files->clear();
    m_files->addTopLevelItems(items);
    for (QTreeWidgetItem *item : qAsConst(items)) {
        if (wasSelected.contains(item->data(0, PathRole).toString()))
            item->setSelected(true);
    }
}

void ProjectDock::updateOptions()
{
    const auto value = [this](const char *name) {
        return m_design->getOptionValue(QLatin1String(name));
    };
    if (!m_top->hasFocus() || !m_top->isModified())
        m_top->setText(value(TE::OPT::TOPMODULE).toString());
    const QStringList includePaths = value(TE::OPT::INCLUDEPATH).toStringList();
    QStringList lines = {
        tr("Verilog standard: %1").arg(value(TE::OPT::Verilog_Standard).toString()),
        tr("Synthesis tool: %1").arg(value(TE::OPT::SYNTHESIZE_TOOL).toString()),
        tr("Include paths: %1")
            .arg(includePaths.isEmpty() ? tr("none") : includePaths.join(QLatin1String(", ")))};
    if (hasVhdl(m_design->project()))
        lines.insert(1, tr("VHDL standard: %1").arg(value(TE::OPT::VHDL_Standard).toString()));
    const QString device = m_design->project().device.deviceName;
    if (!device.isEmpty())
        lines.append(tr("Device: %1").arg(device));
    m_options->setText(m_design->hasProject() ? lines.join(QLatin1Char('\n')) : QString());
}

void ProjectDock::onItemChanged(QTreeWidgetItem *item, int column)
{
    if (column == 0)
        m_design->setFileEnabled(item->data(0, PathRole).toString(),
                                 item->checkState(0) == Qt::Checked);
}

void ProjectDock::onTopEdited()
{
    m_top->setModified(false);
    m_design->setOptionValue(QLatin1String(TE::OPT::TOPMODULE), m_top->text().trimmed());
}

} // namespace Workbench
