ip/secret.v
rtl/top.v
