// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "testcase.h"

#include <QTest>

#include <algorithm>

namespace TarnTest {

namespace {
TestCase *currentTest = nullptr;
}

TestCase::TestCase() = default;

TestCase::~TestCase() = default;

void TestCase::expectWarning(const QString &pattern)
{
    m_expected.append(QRegularExpression(pattern));
}

void TestCase::init()
{
    m_debugLines.clear();
    m_warnings.clear();
    m_expected.clear();
    currentTest = this;
    m_previous = qInstallMessageHandler(handleMessage);
}

void TestCase::cleanup()
{
    qInstallMessageHandler(m_previous);
    m_previous = nullptr;
    currentTest = nullptr;

    for (const QRegularExpression &pattern : qAsConst(m_expected)) {
        const auto found =
            std::find_if(m_warnings.begin(), m_warnings.end(), [&pattern](const QString &warning) {
                return pattern.match(warning).hasMatch();
            });
        if (found == m_warnings.end()) {
            const QString text =
                QStringLiteral("expected warning did not come: ") + pattern.pattern();
            QFAIL(qPrintable(text));
        }
        m_warnings.erase(found);
    }
    if (!m_warnings.isEmpty()) {
        const QString text =
            QStringLiteral("unexpected warning: ") + m_warnings.join(QLatin1Char('\n'));
        QFAIL(qPrintable(text));
    }
}

void TestCase::handleMessage(QtMsgType type, const QMessageLogContext &context,
                             const QString &message)
{
    TestCase *test = currentTest;
    if (!test)
        return;
    // The off-screen platform writes this for every window.
    if (message.startsWith(QLatin1String("This plugin does not support ")))
        return;
    if (type == QtDebugMsg)
        test->m_debugLines.append(message);
    else if (type == QtWarningMsg || type == QtCriticalMsg)
        test->m_warnings.append(message);

    // Announced warnings stay out of the test's own log.
    if (type != QtDebugMsg) {
        for (const QRegularExpression &pattern : qAsConst(test->m_expected)) {
            if (pattern.match(message).hasMatch())
                return;
        }
    }
    if (test->m_previous)
        test->m_previous(type, context, message);
}

} // namespace TarnTest
