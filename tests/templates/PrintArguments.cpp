#include <string>
#include <unistd.h>

// Tells on descriptor 3 how many arguments it was given and which, in one write: it may run beside
// others that do the same.
int main(int argc, char** argv) {
    std::string report = "\x1d" + std::to_string(argc - 1) + ":";
    for (int i = 1; i < argc; ++i) {
        report.append("<").append(argv[i]).append(">");
    }
    report += "\x1d";
    return write(3, report.data(), report.size()) == static_cast<ssize_t>(report.size()) ? 0 : 1;
}
