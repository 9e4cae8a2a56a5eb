// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <dlfcn.h>

#include <cstdio>

// Loads the libraries named by its arguments, asks them for faults, and unloads them in both orders, a thousand times.
namespace {

constexpr int Rounds = 500;

void *load(const char *path)
{
    void *library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::printf("%s\n", dlerror());
        return nullptr;
    }
    using Question = const char *(*)();
    const auto ask = reinterpret_cast<Question>(dlsym(library, "staticReaderFault"));
    const char *fault = ask == nullptr ? "no question to ask" : ask();
    if (fault != nullptr) {
        std::printf("%s: %s\n", path, fault);
    }
    return library;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        return 2;
    }
    for (int round = 0; round < Rounds; ++round) {
        void *first = load(argv[1]);
        void *second = load(argv[2]);
        if (first == nullptr || second == nullptr) {
            return 1;
        }
        dlclose(round % 2 == 0 ? first : second);
        dlclose(round % 2 == 0 ? second : first);
    }
    load(argv[2]); // stays until the process ends
    std::printf("done\n");
    return 0;
}
