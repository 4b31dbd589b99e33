// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module sub(input [`WIDTH-1:0] a, output [`WIDTH-1:0] y);
    assign y = `ADD(a, 2'd1);
endmodule
