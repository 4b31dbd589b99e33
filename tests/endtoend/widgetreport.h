// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGenericPlugin>
#include <QLocalServer>

namespace TarnTest {

/// Reports on a local socket which widgets the application shows and where, so that a script can
/// point a real mouse at them. Only reads; never clicks, focuses or changes anything.
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

/// The plug-in that Qt loads into any application with QT_QPA_GENERIC_PLUGINS=widgetreport:SOCKET.
class WidgetReportPlugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "widgetreport.json")

public:
    QObject *create(const QString &name, const QString &socket) override;
};

} // namespace TarnTest
