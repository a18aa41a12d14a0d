// SPDX-License-Identifier: GPL-3.0-or-later
//
// A stand-in child for the runner's tests. Commands run left to right:
//   stdout TEXT | stderr TEXT        write TEXT
//   stderr-bytes N                   write N bytes to stderr
//   stdout-invalid-utf8              write bytes that are not UTF-8 to stdout
//   report-stdin                     write "stdin=devnull" or "stdin=other" to stdout
//   close-output                     close stdout and stderr, keep running
//   sleep MS | exit N
//   echo-args ARG...                 write every following argument to stdout, NUL-terminated

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

void writeAll(int fd, const char *data, size_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size);
        if (written <= 0)
            return;
        data += written;
        size -= static_cast<size_t>(written);
    }
}

bool stdinIsDevNull()
{
    struct stat in
    {};
    struct stat null
    {};
    return ::fstat(STDIN_FILENO, &in) == 0 && ::stat("/dev/null", &null) == 0 &&
           S_ISCHR(in.st_mode) && in.st_rdev == null.st_rdev;
}

} // namespace

int main(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const std::string command = argv[i];
        const char *operand = i + 1 < argc ? argv[i + 1] : "";
        if (command == "stdout" || command == "stderr") {
            writeAll(command == "stdout" ? 1 : 2, operand, std::strlen(operand));
            ++i;
        } else if (command == "stderr-bytes") {
            const std::string block(65536, 'e');
            for (long left = std::atol(operand); left > 0; left -= 65536)
                writeAll(2, block.data(), static_cast<size_t>(std::min(left, 65536L)));
            ++i;
        } else if (command == "stdout-invalid-utf8") {
            writeAll(1, "ok\xff\xfe\xc3", 5);
        } else if (command == "report-stdin") {
            const char *text = stdinIsDevNull() ? "stdin=devnull" : "stdin=other";
            writeAll(1, text, std::strlen(text));
        } else if (command == "close-output") {
            ::close(STDOUT_FILENO);
            ::close(STDERR_FILENO);
        } else if (command == "sleep") {
            std::this_thread::sleep_for(std::chrono::milliseconds(std::atol(operand)));
            ++i;
        } else if (command == "exit") {
            return std::atoi(operand);
        } else if (command == "echo-args") {
            for (int j = i + 1; j < argc; ++j)
                writeAll(1, argv[j], std::strlen(argv[j]) + 1);
            return 0;
        } else {
            std::fprintf(stderr, "unknown command %s\n", argv[i]);
            return 64;
        }
    }
    return 0;
}
