#include <array>

#include "cli/command.h"
#include "cli/cv_commands.h"

namespace lokari {
namespace {

// clang-format off
constexpr std::array kCommands{
    Command{u"cv read",  u"[--main] [--address N] [--mode direct|paged|register] CV…",      u"liest CVs", cvRead},
    Command{u"cv write", u"[--main] [--address N] [--mode direct|paged|register] CV=WERT…", u"schreibt CVs", cvWrite},
};
// clang-format on

}  // namespace

std::span<const Command> commandTable() {
  return kCommands;
}

}  // namespace lokari
