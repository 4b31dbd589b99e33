// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package fixed_pkg;
    typedef logic signed [3:0] sample_t;
    function automatic sample_t half(input sample_t x);
        return x >>> 1;
    endfunction
endpackage
