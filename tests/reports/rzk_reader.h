// A second reader of vehicle files, written without the program's own: places and numbers are
// those of the other program's format.
#pragma once

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace lokari::test {

struct RzkEntry {
  std::string shortName;
  std::string longName;
  int group = 0;
  int address = 0;

  bool operator==(const RzkEntry&) const = default;
};

struct RzkFile {
  bool good = false;  ///< whole records, and the first one is the head
  std::vector<RzkEntry> vehicles;
};

inline RzkFile readRzkFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string all((std::istreambuf_iterator<char>(in)), {});
  const auto number = [&all](size_t at) {
    const auto low = static_cast<uint8_t>(all[at]);
    const auto high = static_cast<int8_t>(all[at + 1]);
    return high * 256 + low;
  };
  RzkFile file;
  const std::string head = std::string("RZKV51") + '\0' + std::string(3, '\0') +
                           std::string(40, ' ') + std::string(2, '\0');
  file.good = all.size() % 52 == 0 && all.compare(0, 52, head) == 0;
  for (size_t at = 52; at + 52 <= all.size(); at += 52) {
    const std::string shortName = all.substr(at, 7);
    const std::string longName = all.substr(at + 9, 41);
    file.vehicles.push_back({shortName.substr(0, shortName.find('\0')),
                             longName.substr(0, longName.find('\0')), number(at + 7),
                             number(at + 50)});
  }
  return file;
}

}  // namespace lokari::test
