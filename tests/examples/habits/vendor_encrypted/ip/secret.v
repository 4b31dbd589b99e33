// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Interface and settings are open, the rest is not.
module secret(input clk, input [3:0] d, output [3:0] q);
`pragma protect begin_protected
`pragma protect version = 2
`pragma protect encrypt_agent = "keeper" , encrypt_agent_info = "1.0"
`pragma protect key_keyowner = "someone" , key_method = "rsa"
`pragma protect key_block encoding = (enctype = "base64", line_length = 76, bytes = 48)
bW9kdWxlIHNlY3JldDsgd2lyZSBkJ2hpZGRlbjsgYXNzaWduIGhpZGRlbiA9IDEnYjE7
`pragma protect data_method = "aes128-cbc"
`pragma protect data_block encoding = (enctype = "base64", line_length = 76, bytes = 96)
ZW5kbW9kdWxlIC8qIG5vdGhpbmcgdG8gc2VlIGhlcmUgKi8gYGRlZmluZSBYIGBZIGBaICIg
ZW5kIG9mIHRoZSBzdG9yeSBpcyB0aGUgYmVnaW5uaW5nIG9mIHRoZSBuZXh0IG9uZSEhISEh
`pragma protect end_protected
endmodule
