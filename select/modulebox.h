// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QComboBox>

namespace TARN {

/// Box whose popup is as wide as its rows need, up to the width of the screen.
class ModuleBox final : public QComboBox
{
public:
    using QComboBox::QComboBox;

    void showPopup() override;
};

} // namespace TARN
