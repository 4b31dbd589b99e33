// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QVector>

namespace TarnTest {

/// Base of every test class. Records the debug stream while a test function runs. The function
/// fails on a warning or critical message that it did not announce with expectWarning(), and when
/// an announced one is missing.
///
/// A derived class that defines init() or cleanup() has to call the function of this class.
class TestCase : public QObject
{
    Q_OBJECT

public:
    TestCase();
    ~TestCase() override;

protected:
    /// Lines written with qDebug() since the test function began.
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
