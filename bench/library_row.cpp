// The row of bench/run.php that needs no engine: one account number checked by
// the method of its bank, as a C++ program calls the two functions.
//
//     library_row INPUTS/accounts.txt
//
// Prints the nanoseconds of both calls, and 0 for the md5() that is not here.
#include <cstdio>
#include <ctime>

#include "sepa/account/account_check.h"
#include "sepa/directory/bank_directory.h"

static double seconds_so_far() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

int main(int, char** arguments) {
    constexpr int rows = 10000, passes = 10;
    static char accounts[rows][16], banks[rows][16];
    FILE* file = fopen(arguments[1], "r");
    int count = 0, good = 0;
    while (file && count < rows && fscanf(file, "%15s %15s", accounts[count], banks[count]) == 2) ++count;
    double start = seconds_so_far();
    for (int pass = 0; pass < passes; ++pass)
        for (int i = 0; i < count; ++i)
            good += account_check_bank(accounts[i], banks[i], static_cast<uint8_t>(bank_check_method(banks[i]))) == 1;
    double seconds = seconds_so_far() - start;
    if (count != rows || !good) return 1;
    printf("%.2f 0\n", seconds * 1e9 / (rows * passes));
}
