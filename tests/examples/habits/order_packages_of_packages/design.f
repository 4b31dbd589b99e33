// In the order of a folder.
rtl/a_top.sv
rtl/b_config_pkg.sv
rtl/c_base_pkg.sv
rtl/d_math_pkg.sv
