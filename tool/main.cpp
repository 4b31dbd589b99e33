// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "program.h"

int main(int argc, char *argv[])
{
    return Tool::run(argc, argv);
}
