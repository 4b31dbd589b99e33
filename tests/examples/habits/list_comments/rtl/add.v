// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module add(input [`WIDTH-1:0] a, output [`WIDTH-1:0] y);
    assign y = a + 1;
endmodule
