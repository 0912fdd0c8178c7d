// A library that has none of the functions that are looked for.

extern "C" int Nothing() { return 0; }
