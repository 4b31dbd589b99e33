// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
// A library without plug-in metadata.
extern "C" __attribute__((visibility("default"))) int tarnPlainLibrary()
{
    return 1;
}
