#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vlm::bench {

Measured Measure(const char* program, const std::string& task, const std::string& folder) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl(program, program, task.c_str(), folder.c_str(), nullptr);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || status != 0) {
        std::cerr << task << " failed\n";
        std::exit(1);
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), elapsed.count(),
            static_cast<double>(usage.ru_maxrss) / 1024.0};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

int Main(int argc, char** argv, int (*runTask)(const std::string&, const std::string&),
         int (*compare)(const char*, const std::string&)) {
    try {
        if (argc == 3) return runTask(argv[1], argv[2]);
        if (argc == 2) return compare(argv[0], argv[1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    std::cerr << "usage: " << argv[0] << " FOLDER\n";
    return 2;
}

}  // namespace vlm::bench
