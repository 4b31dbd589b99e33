// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "memoryfile.h"

#include <netweir/internal/signals/vhdlpart.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <QString>

#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace NETWEIR;
using namespace NETWEIR::Internal;

namespace {

constexpr std::string_view Separator = "\n== printed ==\n";

} // namespace

/// A wave file and the printed tables are read or refused with a reason. From what was read, a
/// netlist can be built.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view input(reinterpret_cast<const char *>(data), size);
    const size_t end = input.find(Separator);
    if (end == std::string_view::npos)
        return 0;
    const MemoryFile wave(input.substr(0, end));
    const MemoryFile printed(input.substr(end + Separator.size()));
    VhdlPartInput files;
    files.wavePath = wave.path();
    files.outputPath = printed.path();
    files.roots = {{{}, true}};
    QString error;
    const auto part = VhdlPart::read(files, &error);
    if (bool(part) != error.isEmpty())
        std::abort();
    if (!part)
        return 0;
    NetlistBuilder builder(part->unitName(0));
    part->build(0, {}, builder.top(), &builder, [](const BorderInstance &) {});
    builder.take();
    return 0;
}
