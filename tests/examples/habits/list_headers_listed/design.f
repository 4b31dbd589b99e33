// Headers among the sources, as a project navigator writes them.
inc/defines.vh
inc/checks.svh
rtl/top.sv
