// What `dlg_comm` is to do.
#pragma once

namespace lokari {

/// `commJob`: the numbers are compared by the protocols and fixed.
enum class CommJob : int {
  None = 0,
  TestComm = 1,
  ReadProgTrack = 2,
  WriteProgTrack = 3,
  WriteMain = 4,
  SendFirm = 5,
  ReadMain = 6,
  ProgressOnly = 99,  ///< a long job that does not use the station
};

}  // namespace lokari
