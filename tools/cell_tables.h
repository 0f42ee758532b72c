// The tables of directory/bank_codes.h, as C++ text.
#pragma once

#include <cstdio>

#include "bank_lists.h"

void write_bank_codes(FILE* out, const directory_t& directory);
void write_bic_cells(FILE* out, const directory_t& directory);
