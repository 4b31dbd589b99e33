// Comes back to where it came from.
-f lists/one.f
