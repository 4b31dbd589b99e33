// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <model/configreader.h>
#include <model/configwriter.h>
#include <model/tarncore.h>

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

namespace {

/// The result of reading @p content; @p accepted tells whether the reader accepted it.
QList<TARN::TarnCore *> readCores(QByteArray content, bool *accepted)
{
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    TARN::ConfigReader reader(&buffer);
    *accepted = reader.read();
    if (*accepted != reader.errorText().isEmpty())
        std::abort();
    return reader.takeCores();
}

} // namespace

/// Every file is read or refused. A file that was read can be written and read again without a
/// change.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    bool accepted = false;
    const QList<TARN::TarnCore *> cores =
        readCores(QByteArray(reinterpret_cast<const char *>(data), int(size)), &accepted);
    if (!accepted) {
        if (!cores.isEmpty())
            std::abort();
        return 0;
    }

    TARN::ConfigWriter writer(cores);
    const QByteArray written = writer.content();
    const QList<TARN::TarnCore *> copies = readCores(written, &accepted);
    if (!writer.errorText().isEmpty() || !accepted ||
        TARN::ConfigWriter(copies).content() != written)
        std::abort();
    qDeleteAll(cores);
    qDeleteAll(copies);
    return 0;
}
