// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The decision of the filter as plain functions.
package pf_match_pkg;

    import pf_pkg::*;

    function automatic logic rule_matches(input rule_t rule, input header_t header);
        logic kind_ok;
        logic port_ok;
        kind_ok = ((header.kind ^ rule.kind) & rule.kind_mask) == '0;
        port_ok = header.port >= rule.port_low && header.port <= rule.port_high;
        return rule.enable && kind_ok && port_ok;
    endfunction

    // The stricter of two verdicts.
    function automatic verdict_e stricter(input verdict_e a, input verdict_e b);
        return a < b ? a : b;
    endfunction

endpackage
