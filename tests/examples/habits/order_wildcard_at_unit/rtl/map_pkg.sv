// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package map_pkg;
    typedef logic [3:0] address_t;
    localparam address_t BASE = 4'hA;
endpackage : map_pkg
