// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "windowtest.h"

#include <QTest>

namespace TarnTest {

WindowTest::WindowTest() = default;

WindowTest::~WindowTest() = default;

void WindowTest::init()
{
    TestCase::init();
    m_script = std::make_unique<ModalScript>();
}

void WindowTest::cleanup()
{
    const QString problems = m_script->problems();
    m_script.reset();
    TestCase::cleanup();
    QCOMPARE(problems, QString());
}

} // namespace TarnTest
