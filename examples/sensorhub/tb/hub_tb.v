// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Self-checking test of the sensor hub. Plays the host computer on the serial line, the converter,
// the buttons, and the debug core on the nets left open in the design. Ends with PASS or FAIL,
// with +stop_at_first at the first error.
`timescale 1ns / 1ps
`include "hub_defs.vh"

module hub_tb;

    localparam BAUD   = 3125000;
    localparam BIT_NS = 320;

    reg        clk_50m;
    reg        rst_n;
    reg        host_txd;
    wire       host_rxd;
    reg  [3:0] button;
    wire [2:0] led;
    wire       adc_cs_n;
    wire       adc_sclk;
    wire       adc_mosi;
    reg        adc_miso;
    wire [6:0] segment_n;
    wire [3:0] digit_n;
    wire       locked;

    integer errors;
    integer checks;

    hub_top #(
        .BAUD            (BAUD),
        .SAMPLE_CLOCKS   (300),
        .DEBOUNCE_CLOCKS (50),
        .PWM_CLOCKS      (2),
        .SCAN_CLOCKS     (20)
    ) dut (
        .clk_50m   (clk_50m),
        .rst_n     (rst_n),
        .uart_rxd  (host_txd),
        .uart_txd  (host_rxd),
        .button    (button),
        .led       (led),
        .adc_cs_n  (adc_cs_n),
        .adc_sclk  (adc_sclk),
        .adc_mosi  (adc_mosi),
        .adc_miso  (adc_miso),
        .segment_n (segment_n),
        .digit_n   (digit_n),
        .locked    (locked)
    );

    // These take the place of the debug cores. With the macro EXPORTED_CORES it is the module that
    // "tarn export simulation" writes, with the initial values of the configuration.
    reg       probe_duty_force;
    reg [7:0] probe_duty;
    reg       probe_sample_force;
    reg       probe_lamp_test;

`ifndef EXPORTED_CORES
    assign dut.dbg_duty_force  = probe_duty_force;
    assign dut.dbg_duty        = probe_duty;
    assign dut.dbg_sample_force = probe_sample_force;
    assign dut.dbg_lamp_test   = probe_lamp_test;
`endif

    initial clk_50m = 1'b0;
    always #10 clk_50m = !clk_50m;

    // Converter: shifts out four zeros and twelve bits, most significant first.

    reg [11:0] adc_value;
    reg [15:0] adc_shift;

    initial adc_miso = 1'b0;

    always @(negedge adc_cs_n) begin
        adc_shift = {4'd0, adc_value};
        adc_miso  = adc_shift[15];
    end

    always @(negedge adc_sclk) begin
        adc_shift = {adc_shift[14:0], 1'b0};
        adc_miso  = adc_shift[15];
    end

    // Serial line of the host computer

    reg  [7:0] reply [0:255];
    integer    reply_count;

    always begin : receive
        integer   n;
        reg [7:0] value;
        @(negedge host_rxd);
        #(BIT_NS / 2);
        for (n = 0; n < 8; n = n + 1) begin
            #(BIT_NS);
            value[n] = host_rxd;
        end
        #(BIT_NS);
        check(host_rxd === 1'b1, "stop bit of a reply");
        reply[reply_count] = value;
        reply_count        = reply_count + 1;
    end

    task send_byte;
        input [7:0] value;
        integer     n;
        begin
            host_txd = 1'b0;
            #(BIT_NS);
            for (n = 0; n < 8; n = n + 1) begin
                host_txd = value[n];
                #(BIT_NS);
            end
            host_txd = 1'b1;
            #(BIT_NS);
        end
    endtask

    // Bitwise division of the message by the polynomial, independent of the design's method.
    function [7:0] crc_of;
        input [23:0] message;
        input integer bits;
        reg   [31:0] rest;
        integer      n;
        begin
            rest = {message, 8'd0};
            for (n = bits + 7; n >= 8; n = n - 1)
                if (rest[n])
                    rest = rest ^ (32'h107 << (n - 8));
            crc_of = rest[7:0];
        end
    endfunction

    task send_request;
        input [7:0] cmd;
        input [7:0] addr;
        input [7:0] data;
        input [7:0] crc_flip;
        begin
            reply_count = 0;
            send_byte(`SOF_REQUEST);
            send_byte(cmd);
            send_byte(addr);
            send_byte(data);
            send_byte(crc_of({cmd, addr, data}, 24) ^ crc_flip);
            #(BIT_NS * 50);
        end
    endtask

    task check;
        input           good;
        input [8*48:1]  what;
        begin
            checks = checks + 1;
            if (good !== 1'b1) begin
                errors = errors + 1;
                $display("%0t wrong: %0s", $time, what);
                if ($test$plusargs("stop_at_first"))
                    finish;
            end
        end
    endtask

    task expect_reply;
        input [7:0]    status;
        input [7:0]    data;
        input [8*48:1] what;
        begin
            check(reply_count == 4, what);
            check(reply[0] == `SOF_REPLY, what);
            check(reply[1] == status, what);
            check(reply[2] == data, what);
            check(reply[3] == crc_of({8'd0, status, data}, 16), what);
        end
    endtask

    task write_register;
        input [7:0]    addr;
        input [7:0]    data;
        begin
            send_request(`CMD_WRITE, addr, data, 8'h00);
            expect_reply(`STATUS_OK, data, "reply to a write");
        end
    endtask

    task expect_register;
        input [7:0]    addr;
        input [7:0]    data;
        input [8*48:1] what;
        begin
            send_request(`CMD_READ, addr, 8'h00, 8'h00);
            expect_reply(`STATUS_OK, data, what);
        end
    endtask

    // Counts the system clocks in which a LED is on during one period of 255 steps.
    task expect_duty;
        input integer  channel;
        input integer  duty;
        input [8*48:1] what;
        integer        n;
        integer        on;
        begin
            repeat (2 * 510) @(posedge dut.clk_sys);
            on = 0;
            for (n = 0; n < 510; n = n + 1) begin
                @(negedge dut.clk_sys);
                on = on + led[channel];
            end
            check(on == 2 * duty, what);
        end
    endtask

    function [6:0] glyph_of;
        input [3:0] digit;
        begin
            // Segments g f e d c b a of 0 to F, from the font table of the display.
            case (digit)
                4'h0: glyph_of = 7'h3F; 4'h1: glyph_of = 7'h06; 4'h2: glyph_of = 7'h5B;
                4'h3: glyph_of = 7'h4F; 4'h4: glyph_of = 7'h66; 4'h5: glyph_of = 7'h6D;
                4'h6: glyph_of = 7'h7D; 4'h7: glyph_of = 7'h07; 4'h8: glyph_of = 7'h7F;
                4'h9: glyph_of = 7'h6F; 4'hA: glyph_of = 7'h77; 4'hB: glyph_of = 7'h7C;
                4'hC: glyph_of = 7'h39; 4'hD: glyph_of = 7'h5E; 4'hE: glyph_of = 7'h79;
                4'hF: glyph_of = 7'h71;
            endcase
        end
    endfunction

    task expect_display;
        input [15:0]   value;
        input [8*48:1] what;
        integer        n;
        reg   [3:0]    want;
        begin
            repeat (20) @(posedge dut.clk_disp);
            for (n = 0; n < 4; n = n + 1) begin
                want = ~(4'b0001 << n);
                wait (digit_n == want);
                repeat (4) @(negedge dut.clk_disp);
                check(digit_n == want, what);
                check(segment_n == ~glyph_of(value[n*4 +: 4]), what);
            end
        end
    endtask

    // Sets a Probe Out port.
    task set_core0;
        input integer port;
        input [7:0]   value;
        begin
`ifdef EXPORTED_CORES
            tarn_probes.core0.set(port, value);
`else
            case (port)
                0: probe_duty_force = value[0];
                1: probe_duty = value;
                default: probe_sample_force = value[0];
            endcase
`endif
        end
    endtask

    task set_core1;
        input value;
`ifdef EXPORTED_CORES
        tarn_probes.core1.set(0, value);
`else
        probe_lamp_test = value;
`endif
    endtask

    task press;
        input [3:0] state;
        integer     n;
        begin
            for (n = 0; n < 6; n = n + 1) begin
                button = n[0] ? ~state : state;
                #700;
            end
            button = state;
        end
    endtask

    initial begin
        errors            = 0;
        checks            = 0;
        reply_count       = 0;
        host_txd          = 1'b1;
        button            = 4'b0000;
        adc_value         = 12'hABC;
        probe_duty_force  = 1'b0;
        probe_duty        = 8'd0;
        probe_sample_force = 1'b0;
        probe_lamp_test   = 1'b0;
        rst_n             = 1'b0;
        #200 rst_n = 1'b1;
        check(locked === 1'b0, "lock during reset");
        wait (locked);
        repeat (10) @(posedge dut.clk_disp);

        // Registers
        expect_register(`REG_ID, 8'h5E, "identity");
        write_register(`REG_SHOW_LO, 8'hCD);
        write_register(`REG_SHOW_HI, 8'hAB);
        expect_register(`REG_SHOW_LO, 8'hCD, "register SHOW_LO");
        expect_register(`REG_SHOW_HI, 8'hAB, "register SHOW_HI");
        send_request(`CMD_WRITE, `REG_ID, 8'h11, 8'h00);
        expect_reply(`STATUS_BAD_ADDR, 8'h11, "write to a read-only register");
        send_request(`CMD_READ, 8'h40, 8'h00, 8'h00);
        expect_reply(`STATUS_BAD_ADDR, 8'h00, "read of an unknown register");
        send_request(8'h33, `REG_ID, 8'h00, 8'h00);
        expect_reply(`STATUS_BAD_CMD, 8'h5E, "unknown command");

        // Frames that must be dropped
        send_request(`CMD_WRITE, `REG_SHOW_LO, 8'h77, 8'h01);
        check(reply_count == 0, "no reply to a frame with a wrong CRC");
        expect_register(`REG_SHOW_LO, 8'hCD, "register after a dropped frame");
        expect_register(`REG_ERRORS, 8'h01, "error count");

        // LEDs
        write_register(`REG_PWM0, 8'd0);
        write_register(`REG_PWM1, 8'd100);
        write_register(`REG_PWM2, 8'd255);
        expect_duty(0, 0, "LED 0 off");
        expect_duty(1, 100, "LED 1 at 100");
        expect_duty(2, 255, "LED 2 on");

        // Converter and display
        expect_register(`REG_SAMPLE_LO, 8'h00, "sample before sampling");
        write_register(`REG_CTRL, 8'h01);
        repeat (5 * 300) @(posedge dut.clk_sys);
        expect_register(`REG_SAMPLE_LO, 8'hBC, "sample low");
        expect_register(`REG_SAMPLE_HI, 8'h0A, "sample high");
        expect_display(16'h0ABC, "display of the sample");
        write_register(`REG_CTRL, 8'h02);
        expect_display(16'hABCD, "display of the register");
        adc_value = 12'h123;
        repeat (6 * 300) @(posedge dut.clk_sys);
        expect_register(`REG_SAMPLE_LO, 8'hBC, "sample while sampling is off");

        // Buttons
        press(4'b0101);
        #3000 expect_register(`REG_BUTTONS, 8'h05, "buttons pressed");
        press(4'b0000);
        #600 check(dut.button_state == 4'b0101, "buttons while the contacts bounce");
        #4000 expect_register(`REG_BUTTONS, 8'h00, "buttons released");

        // The debug core takes over
        set_core0(1, 8'd50);
        set_core0(0, 8'd1);
        expect_duty(0, 50, "forced LED 0");
        expect_duty(2, 50, "forced LED 2");
        set_core0(0, 8'd0);
        expect_duty(1, 100, "LED 1 released");
        set_core0(2, 8'd1);
        repeat (9 * 300) @(posedge dut.clk_sys);
        set_core0(2, 8'd0);
        expect_register(`REG_SAMPLE_LO, 8'h23, "sample forced by the debug core");
        set_core1(1'b1);
        repeat (4) @(posedge dut.clk_disp);
        #1 check(segment_n == 7'h00, "lamp test");
        set_core1(1'b0);

        finish;
    end

    initial begin
        // In steps: some simulators forget other events beside one far ahead.
        repeat (5000) #1000;
        errors = errors + 1;
        $display("wrong: the test did not come to its end");
        finish;
    end

    task finish;
        begin
            if (errors == 0)
                $display("PASS: %0d checks", checks);
            else
                $display("FAIL: %0d of %0d checks", errors, checks);
            $finish;
        end
    endtask

endmodule
