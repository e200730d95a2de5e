#include "sys/replace.h"

#include <dirent.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "scratch_sysroot.h"

namespace {

class ReplaceTest : public ScratchSysroot {
 protected:
  void SetUp() override {
    ScratchSysroot::SetUp();
    mkdir((root_ + "/var").c_str(), 0755);
  }
  void put(const std::string &path, const std::string &content, mode_t mode = 0644) const {
    std::ofstream(root_ + path) << content;
    chmod((root_ + path).c_str(), mode);
  }
  std::string get(const std::string &path) const {
    std::ifstream in(root_ + path);
    std::ostringstream out;
    out << in.rdbuf();
    return in ? out.str() : "<missing>";
  }
  // The names in /var, sorted: no temporary file may be left behind.
  std::string listing() const {
    struct dirent **names = nullptr;
    int n = scandir((root_ + "/var").c_str(), &names, nullptr, alphasort);
    std::string out;
    for (int i = 0; i < n; i++) {
      if (names[i]->d_name[0] != '.') out += std::string(names[i]->d_name) + " ";
      free(names[i]);
    }
    free(names);
    return out;
  }
};

TEST_F(ReplaceTest, ReplacesWholeAndKeepsTheMode) {
  std::string big(5000, 'n');
  put("/var/app.id", "old\n", 0640);
  put("/new", big);
  EXPECT_EQ(replace_file("/var/app.id", "/new"), 5000);
  EXPECT_EQ(get("/var/app.id"), big);
  struct stat st;
  ASSERT_EQ(stat((root_ + "/var/app.id").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0640u);
  EXPECT_EQ(replace_file("/var/fresh", "/new"), 5000);
  EXPECT_EQ(get("/var/fresh"), big);
  EXPECT_EQ(listing(), "app.id fresh ");
}

TEST_F(ReplaceTest, AFailedCopyLeavesTheOldFile) {
  put("/var/app.id", "old\n");
  put("/empty", "");
  put("/new", std::string(3000, 'n'));
  // Source missing or empty, destination directory missing.
  const struct { const char *destination, *source; long result; } cases[] = {
      {"/var/app.id", "/none", -1}, {"/var/app.id", "/empty", 0}, {"/nodir/app.id", "/new", -2},
      {"/var/app.id", nullptr, -1}, {nullptr, "/new", -1}};
  for (const auto &c : cases) {
    EXPECT_EQ(replace_file(c.destination, c.source), c.result) << (c.source ? c.source : "null");
    EXPECT_EQ(get("/var/app.id"), "old\n");
  }
  EXPECT_EQ(listing(), "app.id ");
}

TEST_F(ReplaceTest, AFileSizeLimitFailsTheCopyAndNotTheProcess) {
  put("/var/app.id", "old\n");
  put("/new", std::string(3000, 'n'));
  struct rlimit saved;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
  struct rlimit limit = saved;
  limit.rlim_cur = 1024;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  long result = replace_file("/var/app.id", "/new");
  setrlimit(RLIMIT_FSIZE, &saved);
  EXPECT_EQ(result, -1);
  EXPECT_EQ(get("/var/app.id"), "old\n");
  EXPECT_EQ(listing(), "app.id ");
}

}  // namespace
