// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "modalscript.h"
#include "testcase.h"

#include <memory>

namespace TarnTest {

/// Base of the tests of windows. Each test function has a script, in which it announces the modal
/// windows. It fails unless exactly these windows appear.
///
/// A derived class that defines init() or cleanup() has to call the function of this class.
class WindowTest : public TestCase
{
    Q_OBJECT

public:
    WindowTest();
    ~WindowTest() override;

protected:
    ModalScript &script() { return *m_script; }

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<ModalScript> m_script;
};

} // namespace TarnTest
