// library-start [WORD...]: the least that a program can cost that loads the libraries of the tool
// and prints. It parses a tiny document, so that the linker keeps the library; with --help as its
// last word it prints a page of help.

#include <libxml/parser.h>

#include <cstring>
#include <iostream>

int main(int argc, char** argv) {
    xmlFreeDoc(xmlReadMemory("<a/>", 4, "a", nullptr, 0));
    if (argc > 1 && std::strcmp(argv[argc - 1], "--help") == 0) {
        for (int i = 0; i < 4; ++i) {
            std::cout << "   -n|--name=<str>    Name of the object to work on, such as web01\n";
        }
    }
    std::cout << "done\n";
}
