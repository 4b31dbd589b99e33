// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Nobody needs it: it is not read, so nobody sees that it is no Verilog.
module unused(
