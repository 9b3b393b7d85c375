// The least that a program can cost that is linked with the libraries of the tool.

int main() {
    return 0;
}
