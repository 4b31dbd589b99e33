// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnfilewizardfactory.h"

#include "newfiledialog.h"
#include "tarnconstants.h"

#include <widgets/modaldialog.h>

namespace TARN {

TarnFileWizardFactory::TarnFileWizardFactory(QObject *parent)
{
    setParent(parent);
}

QString TarnFileWizardFactory::id() const
{
    return QString::fromLatin1(ID_TARN_WIZARD);
}

QString TarnFileWizardFactory::displayName() const
{
    return tr("TARN Config File");
}

QString TarnFileWizardFactory::description() const
{
    return tr("Create a TARN Config File.");
}

void TarnFileWizardFactory::runWizard(QWidget *parent, const QString &path)
{
    execAndDelete(new NewFileDialog(path, parent));
}

} // namespace TARN
