// A bench whose curve is the point: values of the record by CV, and the two options that decide
// about the view.
#pragma once

#include "bench_fixture.h"
#include "decoder/fixed_fields.h"
#include "decoder/speed_table.h"

namespace lokari {

class SpeedFixture : public BenchFixture {
 protected:
  /// Before the bench is opened.
  void store(int cv, int value, char mark = 0) {
    record.recCvValues[0][cv - 1] = static_cast<char>(value);
    record.recCvMarks[0][cv - 1] = mark;
  }

  /// Opens with the user's table in use; 28 steps unless told otherwise.
  void openTable(const char* description, int steps = 28) {
    store(29, config_bit::kSpeedTable + (steps == 28 ? config_bit::kSteps : 0));
    openEco(description);
  }

  /// The values of CV 67 and up.
  std::vector<int> tableValues(int count) const {
    std::vector<int> values;
    for (int i = 0; i < count; ++i) values.push_back(value(67 + i));
    return values;
  }

  SpeedTable table{*bench};
};

}  // namespace lokari
