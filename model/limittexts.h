// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace TARN {

/// What the user reads when an edit would exceed a limit. Each text is translated in the context of
/// the widget that shows it; a program without translations shows it as it is.
namespace LimitTexts {

constexpr char TooManyCores[] =
    QT_TRANSLATE_NOOP("TARN::private_impl::TarnViewPrivate", "Support 16 TARNs at most.");
constexpr char OnlyCore[] =
    QT_TRANSLATE_NOOP("TARN::private_impl::TarnViewPrivate", "The only TARN can not be removed.");

constexpr char TooManyIns[] =
    QT_TRANSLATE_NOOP("TARN::ProbePortsOptionWidget", "Support 64 Probe Ins at most.");
constexpr char TooManyOuts[] =
    QT_TRANSLATE_NOOP("TARN::ProbePortsOptionWidget", "Support 64 Probe Outs at most.");
constexpr char OnlyIn[] =
    QT_TRANSLATE_NOOP("TARN::ProbePortsOptionWidget", "Support 1 Probe In at least.");
constexpr char OnlyOut[] =
    QT_TRANSLATE_NOOP("TARN::ProbePortsOptionWidget", "Support 1 Probe Out at least.");

constexpr char TooManySignals[] =
    QT_TRANSLATE_NOOP("TARN::ProbeDialog", "Support 256 signals at most.");

/// %1 is the value without "0x", %2 the number of the port.
constexpr char ValueTooWide[] =
    QT_TRANSLATE_NOOP("TARN::InitialValueLine",
                      "Value '%1' for Probe Out%2 Initial Value exceeds the effective width.");

} // namespace LimitTexts

} // namespace TARN
