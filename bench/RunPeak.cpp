// kesto-run-peak FOLDER PROGRAM [ARGS...]: runs PROGRAM in FOLDER with stdout and stderr on
// /dev/null and prints "SECONDS PEAK_KB STATUS". The benchmarks start their runs through it:
// a process started straight from a large one inherits that one's resident size as its peak,
// while this launcher stays small.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: kesto-run-peak FOLDER PROGRAM [ARGS...]\n", stderr);
        return 2;
    }
    timespec start{}, end{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    const pid_t pid = fork();
    if (pid == 0) {
        const int null = open("/dev/null", O_WRONLY);
        if (null < 0 || chdir(argv[1]) != 0 || dup2(null, 1) < 0 || dup2(null, 2) < 0)
            _exit(126);
        execv(argv[2], argv + 2);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid)
        return 1;
    clock_gettime(CLOCK_MONOTONIC, &end);
    const double seconds =
        static_cast<double>(end.tv_sec - start.tv_sec) + (end.tv_nsec - start.tv_nsec) / 1e9;
    std::printf("%.6f %ld %d\n", seconds, usage.ru_maxrss,
                WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    return 0;
}
