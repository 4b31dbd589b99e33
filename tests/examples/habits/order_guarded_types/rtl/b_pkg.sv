// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The guard keeps the types out of here: the file in front has them.
`include "types.svh"
package b_pkg;
    typedef struct packed {
        word_t high;
        word_t low;
    } pair_t;
endpackage
