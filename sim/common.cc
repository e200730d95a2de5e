#include "common.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

Fd &Fd::operator=(Fd &&o) noexcept {
  if (this != &o) reset(o.release());
  return *this;
}

Fd::~Fd() { reset(); }

int Fd::release() {
  int fd = fd_;
  fd_ = -1;
  return fd;
}

void Fd::reset(int fd) {
  if (fd_ >= 0) close(fd_);
  fd_ = fd;
}

DirHandle::DirHandle(const char *path) : dir_(opendir(path)) {}

DirHandle::~DirHandle() {
  if (dir_) closedir(dir_);
}

bool read_file(const std::string &path, std::string *out) {
  Fd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!fd.ok()) return false;
  out->clear();
  char buf[4096];
  for (;;) {
    ssize_t n = read(fd.get(), buf, sizeof buf);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    out->append(buf, static_cast<size_t>(n));
  }
  return true;
}

static bool write_all(int fd, const char *data, size_t len) {
  while (len > 0) {
    ssize_t n = write(fd, data, len);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    data += n;
    len -= static_cast<size_t>(n);
  }
  return true;
}

bool write_file(const std::string &path, const std::string &data, mode_t mode) {
  std::string dir = dir_name(path);
  if (!make_dirs(dir)) return false;
  std::string tmp = dir + "/.tmp." + base_name(path) + "." + std::to_string(getpid());
  {
    Fd fd(open(tmp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (!fd.ok()) return false;
    if (!write_all(fd.get(), data.data(), data.size()) || fchmod(fd.get(), mode) != 0) {
      unlink(tmp.c_str());
      return false;
    }
  }
  if (rename(tmp.c_str(), path.c_str()) != 0) {
    unlink(tmp.c_str());
    return false;
  }
  return true;
}

bool append_file(const std::string &path, const std::string &data) {
  Fd fd(open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644));
  if (!fd.ok()) return false;
  return write_all(fd.get(), data.data(), data.size());
}

bool make_dirs(const std::string &path, mode_t mode) {
  if (path.empty() || is_dir(path)) return true;
  std::string parent = dir_name(path);
  if (parent != path && !make_dirs(parent, mode)) return false;
  return mkdir(path.c_str(), mode) == 0 || errno == EEXIST;
}

bool remove_tree(const std::string &path) {
  struct stat st;
  if (lstat(path.c_str(), &st) != 0) return errno == ENOENT;
  if (S_ISDIR(st.st_mode)) {
    chmod(path.c_str(), st.st_mode | S_IRWXU);
    for (const std::string &name : list_dir(path))
      if (!remove_tree(path + "/" + name)) return false;
    return rmdir(path.c_str()) == 0;
  }
  return unlink(path.c_str()) == 0;
}

bool path_exists(const std::string &path) {
  struct stat st;
  return lstat(path.c_str(), &st) == 0;
}

bool is_dir(const std::string &path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::string dir_name(const std::string &path) {
  size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return path.substr(0, slash);
}

std::string base_name(const std::string &path) {
  size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::vector<std::string> list_dir(const std::string &path) {
  std::vector<std::string> names;
  DirHandle dir(path.c_str());
  if (!dir.get()) return names;
  while (struct dirent *e = readdir(dir.get())) {
    if (strcmp(e->d_name, ".") == 0 || strcmp(e->d_name, "..") == 0) continue;
    names.emplace_back(e->d_name);
  }
  return names;
}

std::string trim(const std::string &s) {
  const char *ws = " \t\r\n\f\v";
  size_t b = s.find_first_not_of(ws);
  if (b == std::string::npos) return "";
  size_t e = s.find_last_not_of(ws);
  return s.substr(b, e - b + 1);
}

std::vector<std::string> split_words(const std::string &s) {
  std::vector<std::string> words;
  size_t i = 0;
  while (i < s.size()) {
    while (i < s.size() && isspace(static_cast<unsigned char>(s[i]))) i++;
    size_t b = i;
    while (i < s.size() && !isspace(static_cast<unsigned char>(s[i]))) i++;
    if (i > b) words.push_back(s.substr(b, i - b));
  }
  return words;
}

bool parse_int(const std::string &s, long *out) {
  if (s.empty()) return false;
  errno = 0;
  char *end = nullptr;
  long v = strtol(s.c_str(), &end, 10);
  if (errno != 0 || *end != '\0' || isspace(static_cast<unsigned char>(s[0]))) return false;
  *out = v;
  return true;
}

std::string strprintf(const char *format, ...) {
  va_list ap;
  va_start(ap, format);
  va_list ap2;
  va_copy(ap2, ap);
  int n = vsnprintf(nullptr, 0, format, ap);
  va_end(ap);
  std::string s;
  if (n > 0) {
    s.resize(static_cast<size_t>(n) + 1);
    vsnprintf(&s[0], s.size(), format, ap2);
    s.resize(static_cast<size_t>(n));
  }
  va_end(ap2);
  return s;
}

static void escape_into(std::string *out, unsigned char c, bool quote) {
  if (c == '\\') {
    *out += "\\\\";
  } else if (c == '\n') {
    *out += "\\n";
  } else if (c == '\t') {
    *out += "\\t";
  } else if (quote && c == '"') {
    *out += "\\\"";
  } else if (c >= 0x20 && c < 0x7f) {
    *out += static_cast<char>(c);
  } else {
    *out += strprintf("\\x%02x", c);
  }
}

std::string escape_bytes(const char *data, size_t len) {
  std::string out;
  out.reserve(len);
  for (size_t i = 0; i < len; i++) escape_into(&out, static_cast<unsigned char>(data[i]), false);
  return out;
}

std::string quote_word(const std::string &word) {
  bool bare = !word.empty();
  for (unsigned char c : word)
    if (c <= 0x20 || c >= 0x7f || c == '"' || c == '\\') bare = false;
  if (bare) return word;
  std::string out = "\"";
  for (unsigned char c : word) escape_into(&out, c, true);
  return out + "\"";
}

std::string SimRoot::backing(const std::string &gateway_path) const {
  if (gateway_path == "/proc" || gateway_path.compare(0, 6, "/proc/") == 0)
    return sim() + gateway_path;
  return root + gateway_path;
}

void SimRoot::journal(const std::string &line) const { append_file(journal_path(), line + "\n"); }

std::string SimRoot::hide_root(const std::string &text) const {
  std::string out;
  size_t i = 0;
  while (i < text.size()) {
    if (text.compare(i, root.size(), root) == 0 &&
        (i + root.size() == text.size() || text[i + root.size()] == '/')) {
      out += "$R";
      i += root.size();
    } else {
      out += text[i++];
    }
  }
  return out;
}

std::string absolute_path(const std::string &path) {
  if (!path.empty() && path[0] == '/') {
    std::string p = path;
    while (p.size() > 1 && p.back() == '/') p.pop_back();
    return p;
  }
  char cwd[PATH_MAX];
  if (!getcwd(cwd, sizeof cwd)) return path;
  std::string p = std::string(cwd) + "/" + path;
  while (p.size() > 1 && p.back() == '/') p.pop_back();
  return p;
}

std::string self_exe() {
  char buf[PATH_MAX];
  ssize_t n = readlink("/proc/self/exe", buf, sizeof buf - 1);
  if (n <= 0) return "";
  return std::string(buf, static_cast<size_t>(n));
}
