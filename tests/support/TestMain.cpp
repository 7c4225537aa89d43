#include "support/TestClass.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

namespace
{

std::vector<TestClass>& TestClasses()
{
    static std::vector<TestClass> classes;
    return classes;
}

} // namespace

bool RegisterTestClass(const TestClass& test)
{
    TestClasses().push_back(test);
    return true;
}

int main(int argc, char* argv[])
{
    const std::string_view wanted = argc > 1 ? argv[1] : "";
    for (const TestClass& test : TestClasses()) {
        if (test.name == wanted) {
            return test.run(argc - 1, argv + 1);
        }
    }
    std::fprintf(stderr, "usage: %s CLASS [OPTION OF QT TEST...]\nThe classes are:\n", argv[0]);
    for (const TestClass& test : TestClasses()) {
        std::fprintf(stderr, "  %s\n", test.name);
    }
    return 2;
}
