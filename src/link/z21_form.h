// The two forms in which a Z21 is spoken to: as it always was, and as the documents of its maker
// have it (setting `MakerForm`). What goes out differently is decided here, and nowhere in the
// flow.
#pragma once

namespace lokari {

struct Settings;

struct Z21Form {
  bool checksOfBytes;       ///< a message's checksum is that of its bytes, not of its text
  bool switchesOnAtLogOn;   ///< the first session switches the track on
  bool subscribes;          ///< each session asks for broadcasts and for the status
  bool leavesAsFound;       ///< behind programming the track is on again only where it was
  bool asksOtherTrack;      ///< a read on the main track has its last chance on the other one
  bool repeatsBehindNews;   ///< news of the track leave a CV without an answer unanswered
  bool marksMainAddresses;  ///< CV messages to the main track carry the mark of long addresses
};

const Z21Form& z21Form(const Settings& settings);

}  // namespace lokari
