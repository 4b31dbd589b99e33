// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`ifndef CORE_PKG_SV
`define CORE_PKG_SV
package core_pkg;
    typedef struct packed {
        logic       enable;
        logic [2:0] level;
    } control_t;
    function automatic logic is_on(control_t c);
        return c.enable && c.level != '0;
    endfunction
endpackage
`endif
