// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QVector>

namespace TarnTest {

/// Base of every test class. Records the debug stream while a test function runs and fails the
/// function when a warning or a critical message was written that it did not announce with
/// expectWarning(), or when an announced one did not come.
///
/// A derived class with an init() or cleanup() of its own calls the one here.
class TestCase : public QObject
{
    Q_OBJECT

public:
    TestCase();
    ~TestCase() override;

protected:
    /// Lines written with qDebug() since the test function began, exact to the byte.
    QStringList debugLines() const { return m_debugLines; }
    void clearDebugLines() { m_debugLines.clear(); }

    /// Announces one message of level warning or critical that contains @p pattern.
    void expectWarning(const QString &pattern);

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    static void handleMessage(QtMsgType type, const QMessageLogContext &context,
                              const QString &message);

    QStringList m_debugLines;
    QStringList m_warnings;
    QVector<QRegularExpression> m_expected;
    QtMessageHandler m_previous = nullptr;
};

} // namespace TarnTest

/// main() of a test program with widgets.
#define TARN_TEST_MAIN(TestClass)                                                                  \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        QApplication app(argc, argv);                                                              \
        app.setApplicationName(QStringLiteral("tarn-test"));                                       \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
