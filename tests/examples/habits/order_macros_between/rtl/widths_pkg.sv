// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Read last by the preprocessor, although the elaborator needs it first.
package widths_pkg;
    localparam int LAST = `W;
endpackage
