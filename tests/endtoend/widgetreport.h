// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGenericPlugin>
#include <QLocalServer>

namespace TarnTest {

/// Tells everybody who connects to a local socket what the application shows and where, so that a
/// script can point a real mouse at it. Only reads: nothing is clicked, focused or changed here.
class WidgetReport final : public QObject
{
    Q_OBJECT

public:
    /// Listens on the socket file @p path.
    explicit WidgetReport(const QString &path);

private:
    void answer();

    QLocalServer m_server;
};

/// The plug-in that Qt loads by QT_QPA_GENERIC_PLUGINS=widgetreport:SOCKET into any application.
class WidgetReportPlugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "widgetreport.json")

public:
    QObject *create(const QString &name, const QString &socket) override;
};

} // namespace TarnTest
