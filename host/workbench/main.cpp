// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "workbench.h"

int main(int argc, char *argv[])
{
    return Workbench::run(argc, argv);
}
