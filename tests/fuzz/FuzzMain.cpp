// SPDX-License-Identifier: Apache-2.0
// Runs a fuzz target without a fuzzing engine: on files as they are, or on mutations of them that are the
// same in every run. An input that makes the target crash or abort is left in "failed-input".
//
// usage: TARGET FILE... | TARGET --mutate COUNT FILE...
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t count);

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes readFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        std::exit(2);
    }
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

/// Keeps the input that is being tried where it can be found after a crash.
class InputRecord
{
public:
    InputRecord()
        : m_file(open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0666))
    {
    }

    void keep(const Bytes &input) const
    {
        // Through one open file: to open and truncate it each time would wait for the disk each time.
        if (pwrite(m_file, input.data(), input.size(), 0) != static_cast<ssize_t>(input.size()) ||
            ftruncate(m_file, static_cast<off_t>(input.size())) != 0)
            std::perror(path);
    }
    void remove() const { unlink(path); }

private:
    static constexpr const char *path = "failed-input";
    int m_file;
};

void run(const Bytes &input, const InputRecord &record)
{
    record.keep(input);
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

class Mutator
{
public:
    Bytes mutate(Bytes input)
    {
        for (std::size_t changes = 1 + below(4); changes > 0 && !input.empty(); --changes)
            change(input);
        return input;
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    void change(Bytes &input)
    {
        const auto at = input.begin() + static_cast<std::ptrdiff_t>(below(input.size()));
        const auto room = static_cast<std::size_t>(input.end() - at);
        const auto length = static_cast<std::ptrdiff_t>(1 + below(std::min<std::size_t>(room, 40)));
        switch (below(6)) {
        case 0:
            *at = static_cast<std::uint8_t>(m_random());
            break;
        case 1:
            *at ^= static_cast<std::uint8_t>(1U << below(8));
            break;
        case 2:
            input.erase(at, at + length);
            break;
        case 3:
            repeat(input, at, length);
            break;
        case 4:
            input.resize(static_cast<std::size_t>(at - input.begin()));
            break;
        default:
            replaceByOther(input, at, length);
        }
    }

    void repeat(Bytes &input, Bytes::iterator at, std::ptrdiff_t length)
    {
        const Bytes piece(at, at + length);
        input.insert(at, piece.begin(), piece.end());
    }

    /// A piece from elsewhere in the input: numbers become names, names become numbers.
    void replaceByOther(Bytes &input, Bytes::iterator at, std::ptrdiff_t length)
    {
        const auto from =
            static_cast<std::ptrdiff_t>(below(input.size() - static_cast<std::size_t>(length) + 1));
        const Bytes piece(input.begin() + from, input.begin() + from + length);
        std::copy(piece.begin(), piece.end(), at);
    }

    std::mt19937 m_random{20240229};
};

} // namespace

int main(int argc, char **argv)
{
    std::vector<std::string> arguments(argv + 1, argv + argc);
    unsigned long mutations = 0;
    if (arguments.size() >= 2 && arguments[0] == "--mutate") {
        mutations = std::strtoul(arguments[1].c_str(), nullptr, 10);
        arguments.erase(arguments.begin(), arguments.begin() + 2);
    }
    std::vector<Bytes> seeds;
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(seeds), readFile);
    if (seeds.empty()) {
        std::fprintf(stderr, "no input\n");
        return 2;
    }
    const InputRecord record;
    for (const Bytes &seed : seeds)
        run(seed, record);
    Mutator mutator;
    for (unsigned long i = 0; i < mutations; ++i)
        run(mutator.mutate(seeds[i % seeds.size()]), record);
    record.remove();
    std::printf("%zu inputs, %lu mutations\n", seeds.size(), mutations);
    return 0;
}
