src/baud.v
