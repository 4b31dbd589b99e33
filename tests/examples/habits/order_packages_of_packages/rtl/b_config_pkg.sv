// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package b_config_pkg;
    import c_base_pkg::*;
    export c_base_pkg::*;
    typedef logic [d_math_pkg::log2(BYTES)-1:0] address_t;
endpackage
