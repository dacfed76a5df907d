// What the tests of RdComm start from: a description with CVs on every page, and a decoder that
// holds its own number in most CVs.
#pragma once

#include "bench_fixture.h"

namespace lokari {

inline const char* const kReadDescription =
    "[X]\n"
    "CV_2=Spannung,0-63,3\nCV_3=Zeit\nCV_4=Bremse\nCV_5=Hoch\nCV_6=Mitte\n"
    "CV_9=Periode,0-99,0,2\n"
    "CV_30=Fehler,0-255,256,5\nCV_33=Licht,0-15,0,3\nCV_49=Regler,0-3,0,4\nCV_51=Klang,0-9,0,6\n"
    "CV_52=nur Liste\n";

class ReadFixture : public BenchFixture {
 protected:
  ReadFixture() {
    for (int cv = 2; cv <= 1024; ++cv) {
      if (cv != 8 && cv != 29 && cv != 17 && cv != 18) decoder().store(cv, cv % 251);
    }
    decoder().store(29, 2);
  }

  /// Status texts without those of beginning and end.
  QStringList steps() const { return view.statuses.mid(1, view.statuses.size() - 2); }
};

}  // namespace lokari
