// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <model/configwriter.h>
#include <model/tarncore.h>
#include <tool/config/configjson.h>
#include <tool/configfile.h>

#include <cstdint>
#include <cstdlib>

/// Every text is read as the JSON form of a configuration or refused. What was read can be written
/// to a file, and its JSON form is read again without a change.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Tool::OwnedCores cores;
    QString error;
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    const bool accepted = Tool::configFromJson(input, &cores, &error);
    if (accepted != error.isEmpty() || (!accepted && !error.startsWith(QLatin1String("Line "))))
        std::abort();
    if (!accepted)
        return 0;

    TARN::ConfigWriter writer(cores.list());
    const QByteArray file = writer.content();
    const QByteArray json = Tool::configToJson(cores.list());
    Tool::OwnedCores copies;
    if (!writer.errorText().isEmpty() || !Tool::configFromJson(json, &copies, &error) ||
        Tool::configToJson(copies.list()) != json ||
        TARN::ConfigWriter(copies.list()).content() != file)
        std::abort();
    return 0;
}
