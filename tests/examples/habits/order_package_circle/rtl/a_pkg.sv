// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package a_pkg;
    import b_pkg::*;
    localparam int A = B + 1;
endpackage
