// The seed of the properties: fixed on a build server, so that a red run is about the change and
// not about luck; new at every run elsewhere. It is printed, and RC_PARAMS=seed=N gives it again.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace zolmara::test {
namespace {

class RapidCheckSeed : public ::testing::Environment {
public:
    void SetUp() override {
        const char* given = std::getenv("RC_PARAMS");
        std::string params = given ? given : "";
        if (params.find("seed=") == std::string::npos) params += " seed=" + Seed();
        setenv("RC_PARAMS", params.c_str(), 1);
        std::cout << "RC_PARAMS:" << params << std::endl;
    }

private:
    static std::string Seed() {
        return std::getenv("CI") ? "28722" : std::to_string(std::random_device()());
    }
};

const auto* const seed = ::testing::AddGlobalTestEnvironment(new RapidCheckSeed);

}  // namespace
}  // namespace zolmara::test
