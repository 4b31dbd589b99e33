// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input map_pkg::address_t address, output logic hit);
    user u_user(.*);
endmodule
