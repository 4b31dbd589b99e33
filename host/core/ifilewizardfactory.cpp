// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ifilewizardfactory.h"

namespace Core {

IFileWizardFactory::IFileWizardFactory(QObject *parent)
    : QObject(parent)
{
}

IFileWizardFactory::~IFileWizardFactory() = default;

} // namespace Core
