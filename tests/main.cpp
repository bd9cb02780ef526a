// The test program. It works in a folder of its own, so that the files that a test writes to the current
// folder meet those of no other run, and takes it away at the end.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    std::string folder = (std::filesystem::temp_directory_path() / "qx_tests.XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        std::cerr << "no temporary folder for the tests\n";
        return 1;
    }
    std::filesystem::current_path(folder);
    const int status = RUN_ALL_TESTS();
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder);
    return status;
}
