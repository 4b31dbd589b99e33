// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package bench_pkg;
    typedef logic [2:0] level_t;
    localparam level_t STEP = 3'd1;
    typedef class packet;
    class packet;
        rand bit [7:0] length;
        rand byte      payload[];
        static int     count = 0;
        constraint sane { length inside {[1:64]}; payload.size() == length; }
        function new(string name = "packet");
            count++;
        endfunction
        virtual function void print();
            $display("%0d bytes", length);
        endfunction
        virtual task send(mailbox #(packet) box);
            box.put(this);
        endtask
    endclass
    class long_packet extends packet;
        constraint long { length > 32; }
        function new(string name = "long_packet");
            super.new(name);
        endfunction
        function void print();
            super.print();
        endfunction
    endclass
endpackage
