#include <cstdio>

int main()
{
    std::fputs("usage: mq27diag-cli dump FILE.ko3\n", stderr);
    return 2;
}
