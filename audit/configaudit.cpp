// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configaudit.h"

#include "designnames.h"

#include <model/configsnapshot.h>

namespace TARN {

class ConfigAudit::Private
{
};

ConfigAudit::ConfigAudit(Notes)
    : d(std::make_unique<Private>())
{
}

ConfigAudit::~ConfigAudit() = default;

void ConfigAudit::setNames(const DesignNames *) {}

void ConfigAudit::update(const ConfigSnapshot &) {}

int ConfigAudit::count() const
{
    return 0;
}

Finding ConfigAudit::at(int) const
{
    return {};
}

QString ConfigAudit::placeText(const Place &) const
{
    return {};
}

ConfigAudit::Summary ConfigAudit::summary() const
{
    return {};
}

QVector<Finding> auditConfig(const QList<TarnCore *> &, NETWEIR::RtlNetlist *)
{
    return {};
}

} // namespace TARN
