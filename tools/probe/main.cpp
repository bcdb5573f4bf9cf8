#include "probe/Adaptors.h"

#include <iostream>

// Answers the requests on standard input, one line each, until the input ends or nobody reads the
// answers any more.
int main()
{
    std::ios::sync_with_stdio(false);
    std::string line;
    while (std::cout && std::getline(std::cin, line))
        std::cout << tavrel::probe::respondToLine(line) << '\n' << std::flush;
    return 0;
}
