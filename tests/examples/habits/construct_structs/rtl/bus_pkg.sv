// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package bus_pkg;
    typedef enum logic [1:0] {READ = 2'd1, WRITE = 2'd2} command_t;
    typedef struct packed {
        logic [3:0] address;
        command_t   command;
    } head_t;
    typedef struct packed {
        head_t           head;
        logic [1:0][3:0] data;
    } request_t;
    typedef struct {
        logic ok;
        int   code;
    } status_t;
    typedef union packed {
        logic [5:0] raw;
        head_t      head;
    } view_t;
    localparam request_t EMPTY = '{head: '{address: '0, command: READ}, default: '0};
endpackage
