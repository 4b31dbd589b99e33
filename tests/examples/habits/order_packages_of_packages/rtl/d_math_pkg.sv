// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package d_math_pkg;
    function automatic int square(input int x);
        return x * x;
    endfunction
    function automatic int log2(input int x);
        log2 = 0;
        while (2 ** log2 < x)
            log2++;
    endfunction
endpackage
