#pragma once

#include <string>
#include <vector>

/// Measurements of whole processes: each has its own CPU time and its own peak memory.
namespace vlm::bench {

struct Measured {
    double cpuSeconds;
    double seconds;
    double peakMiB;
};

/// Runs `program task folder` as a process of its own; a task that fails ends the measuring program.
Measured Measure(const char* program, const std::string& task, const std::string& folder);

double Median(std::vector<double> values);

/// A measuring program: with a folder it compares, with a task and a folder it is the process that is measured.
int Main(int argc, char** argv, int (*runTask)(const std::string& task, const std::string& folder),
         int (*compare)(const char* program, const std::string& folder));

}  // namespace vlm::bench
