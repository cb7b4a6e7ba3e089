// SPDX-License-Identifier: Apache-2.0
// A child program that ends in the way its first argument asks for.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

void flood()
{
    char block[65536];
    std::memset(block, 'x', sizeof block);
    for (int i = 0; i < 1024; ++i)
        std::fwrite(block, 1, sizeof block, i % 2 ? stderr : stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const char *how = argc > 1 ? argv[1] : "";
    if (!std::strcmp(how, "exit"))
        return std::atoi(argv[2]);
    if (!std::strcmp(how, "crash"))
        std::raise(SIGKILL);
    if (!std::strcmp(how, "hang"))
        ::pause();
    if (!std::strcmp(how, "flood"))
        flood();
    if (!std::strcmp(how, "complain"))
        std::fputs("first line\nlast\x1b[31m line\n", stderr);
    if (!std::strcmp(how, "read"))
        return std::getchar() == EOF ? 0 : 1;
    if (!std::strcmp(how, "arguments")) {
        for (int i = 2; i < argc; ++i)
            std::printf("[%s]", argv[i]);
    }
    return std::strcmp(how, "complain") ? 0 : 3;
}
