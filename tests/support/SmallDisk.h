#pragma once

#ifndef _WIN32  // where no disk can be made small
#define VLM_SMALL_DISK

#include <csignal>
#include <sys/resource.h>

namespace vlm::test {

/// Files end after that many bytes while it lives, as on a disk that is full.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

}  // namespace vlm::test

#endif
