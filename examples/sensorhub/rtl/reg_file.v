// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "hub_defs.vh"
`default_nettype none

// The registers that the host computer sees. A request is answered one clock later.
module reg_file (
    input  wire        clk,
    input  wire        rst_n,
    input  wire        request,
    input  wire [7:0]  cmd,
    input  wire [7:0]  addr,
    input  wire [7:0]  wdata,
    output reg         reply,
    output reg  [7:0]  status,
    output reg  [7:0]  rdata,
    input  wire [3:0]  buttons,
    input  wire [11:0] sample,
    input  wire [7:0]  error_count,
    output reg  [1:0]  ctrl,
    output reg  [23:0] duty,
    output reg  [15:0] show
);

    reg  [7:0] value;
    reg        known;
    reg        writable;
    wire       is_write = cmd == `CMD_WRITE;
    wire       is_read  = cmd == `CMD_READ;
    wire       do_write = request && is_write && writable;

    always @* begin
        known    = 1'b1;
        writable = 1'b0;
        case (addr)
            `REG_ID:        value = `HUB_ID;
            `REG_CTRL:      begin value = {6'd0, ctrl};  writable = 1'b1; end
            `REG_PWM0:      begin value = duty[7:0];     writable = 1'b1; end
            `REG_PWM1:      begin value = duty[15:8];    writable = 1'b1; end
            `REG_PWM2:      begin value = duty[23:16];   writable = 1'b1; end
            `REG_SHOW_LO:   begin value = show[7:0];     writable = 1'b1; end
            `REG_SHOW_HI:   begin value = show[15:8];    writable = 1'b1; end
            `REG_BUTTONS:   value = {4'd0, buttons};
            `REG_SAMPLE_LO: value = sample[7:0];
            `REG_SAMPLE_HI: value = {4'd0, sample[11:8]};
            `REG_ERRORS:    value = error_count;
            default: begin
                value = 8'd0;
                known = 1'b0;
            end
        endcase
    end

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            reply  <= 1'b0;
            status <= `STATUS_OK;
            rdata  <= 8'd0;
        end else begin
            reply <= request;
            if (request) begin
                rdata <= is_write ? wdata : value;
                if (!is_read && !is_write)
                    status <= `STATUS_BAD_CMD;
                else if (!known || (is_write && !writable))
                    status <= `STATUS_BAD_ADDR;
                else
                    status <= `STATUS_OK;
            end
        end

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            ctrl <= 2'd0;
            duty <= 24'd0;
            show <= 16'd0;
        end else if (do_write)
            case (addr)
                `REG_CTRL:    ctrl        <= wdata[1:0];
                `REG_PWM0:    duty[7:0]   <= wdata;
                `REG_PWM1:    duty[15:8]  <= wdata;
                `REG_PWM2:    duty[23:16] <= wdata;
                `REG_SHOW_LO: show[7:0]   <= wdata;
                `REG_SHOW_HI: show[15:8]  <= wdata;
                default: ;
            endcase

endmodule

`default_nettype wire
