// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package c_base_pkg;
    localparam int BYTES = d_math_pkg::square(8);
endpackage
