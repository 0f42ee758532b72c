// What the programs of this folder share: reading a file whole, and the end of
// a program that met a fault. Faults in lists end it too (stop in list_text.h).
#pragma once

#include <string>

extern const char* const program_name;  // each program brings its own

// Prints the reason under the program's name and ends it with status 1.
[[noreturn]] void stop(const std::string& reason);

// The content of a file; one that cannot be read is a fault.
std::string read_file(const std::string& name);
