// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "fakeplugin.h"

#include <QLatin1String>

namespace {

/// A plug-in library reports through the environment of the process, which it shares with the test.
void note(const QByteArray &what)
{
    const QByteArray line = QByteArray(FAKE_NAME) + ' ' + what + '\n';
    qputenv("TARN_FAKE_PLUGIN_LOG", qgetenv("TARN_FAKE_PLUGIN_LOG") + line);
}

/// Shows that code of the library has run.
struct LoadMark
{
    LoadMark() { note("loaded"); }
} loadMark;

class Released final : public QObject
{
public:
    explicit Released(const QString &name) { setObjectName(name); }
    ~Released() override { note("releases " + objectName().toLatin1()); }
};

} // namespace

FAKE_CLASS::~FAKE_CLASS()
{
    note("destroyed");
}

bool FAKE_CLASS::initialize()
{
    note("initialize");
    addAutoReleasedObject(new Released(QStringLiteral("a")));
    addAutoReleasedObject(new Released(QStringLiteral("b")));
    return FAKE_INITIALIZES;
}

void FAKE_CLASS::extensionsInitialized()
{
    note("extensionsInitialized");
}

void FAKE_CLASS::shutDown()
{
    note("shutDown");
}
