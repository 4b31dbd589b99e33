// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package b_pkg;
    localparam int B = a_pkg::A - 1;
endpackage
