// A decoder: its CVs, plain and in banks, and how it answers programming.
#pragma once

#include <QString>

#include <array>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace lokari::sim {

/// Programming methods of the service mode.
enum class Method { Direct, Paged, Register };

/// A range of CV numbers, both ends included.
struct CvRange {
  int first = 0;
  int last = 0;
  bool has(int cv) const { return cv >= first && cv <= last; }
};

/// CVs that show when the index registers hold these values.
struct CvBankContents {
  std::vector<int> select;  ///< one value per index register
  std::map<int, int> values;
};

class Decoder {
 public:
  static constexpr int kLastCv = 1024;

  // What it is; set once, by hand or from a decoder file.
  QString name;
  std::vector<CvRange> present{{1, kLastCv}};  ///< CVs it has
  std::set<int> readOnly{7, 8};                ///< no acknowledge on a write
  std::set<int> sticky;                        ///< acknowledge a write and keep their value
  std::set<Method> methods{Method::Direct, Method::Paged, Method::Register};
  /// Decoder lock: writes, but those to the second CV, need equal values in both. 0 for none.
  std::array<int, 2> lock{0, 0};
  std::vector<int> indexRegisters{31, 32};
  CvRange banked{257, 512};  ///< what the banks replace
  std::vector<CvBankContents> banks;

  /// Address 1 to 10239; sets CV 1 or CVs 17 and 18, and bit 5 of CV 29.
  void setAddress(int address);
  /// By CV 29 and CV 1, 17, 18.
  int address() const;
  int manufacturer() const { return stored(8); }

  /// The content of a CV as the decoder sees it now, whether it has it or not; 0 when never set.
  int stored(int cv) const;
  /// Puts a value in, past every protection.
  void store(int cv, int value);

  /// What it answers to programming: the value, or nothing for no acknowledge. In register mode
  /// register 5 is CV 29, and registers above 8 do not exist.
  std::optional<int> read(int cv, Method method = Method::Direct) const;
  /// True for an acknowledge.
  bool write(int cv, int value, Method method = Method::Direct);

 private:
  /// The CV that a number names by this method, or nothing.
  std::optional<int> resolve(int cv, Method method) const;
  const CvBankContents* bankOf(int cv) const;

  std::map<int, int> values_;
};

}  // namespace lokari::sim
