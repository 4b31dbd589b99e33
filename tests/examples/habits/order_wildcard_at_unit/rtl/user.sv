// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

import map_pkg::*;
module user(input address_t address, output logic hit);
    assign hit = address == BASE;
endmodule
