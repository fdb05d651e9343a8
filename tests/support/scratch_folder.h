#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/** A folder that is there for one test. */
struct ScratchFolder {
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vesmo-test-XXXXXX").string();
    fPath = mkdtemp(name.data());
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code error;
    std::filesystem::permissions(fPath, std::filesystem::perms::owner_all, error);
    std::filesystem::remove_all(fPath, error);
  }

  std::string Path() const { return fPath; }
  std::string File(const std::string& name) const { return fPath + "/" + name; }
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(File(name), std::ios::binary) << bytes;
    return File(name);
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

private:
  std::string fPath;
};
