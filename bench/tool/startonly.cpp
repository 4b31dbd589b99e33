// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <QCoreApplication>

#include <cstdio>

/// Writes a line and ends.
int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    std::puts("started");
    return 0;
}
