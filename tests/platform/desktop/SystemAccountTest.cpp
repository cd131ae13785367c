#include "platform/desktop/SystemAccount.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace kelvo {
namespace {

TEST(SystemAccount, TakesTheNameBeforeTheFirstCommaOfTheGecosEntry) {
    const std::pair<const char*, const char*> cases[] = {
        {"Ada Byron,Room 7,,", "Ada Byron"},
        {"Ada Byron", "Ada Byron"},
        {" Ada ,x", "Ada"},
        {",Room 7", ""},
        {"", ""},
        {"Zo\xC3\xAB\xFF", "Zoë\uFFFD"},
    };
    for (const auto& [gecos, name] : cases)
        EXPECT_EQ(SystemAccount::nameInGecos(gecos), name) << gecos;
}

TEST(SystemAccount, IsTheRealAccountWhateverTheEnvironmentSays) {
    ::setenv("USER", "mallory", 1);
    ::setenv("LOGNAME", "mallory", 1);
    const passwd* entry = ::getpwuid(::getuid());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(SystemAccount::loginName(), entry->pw_name);
    EXPECT_EQ(SystemAccount().fullName(), SystemAccount::nameInGecos(entry->pw_gecos));
}

} // namespace
} // namespace kelvo
