#include "decoder/page_rows.h"

#include <algorithm>
#include <array>

namespace lokari {
namespace {

struct PageNames {
  const char16_t* name;
  const char16_t* caption;
  TabNumber firstTab;
};
constexpr std::array<PageNames, 4> kPages{{
    {u"Func", u"Funktionen", TabNumber::Functions},
    {u"Manuf", u"Hersteller", TabNumber::Maker},
    {u"Other", u"Sonstige", TabNumber::Others},
    {u"Sound", u"Sound", TabNumber::Sound},
}};

const PageNames& namesOf(int page) {
  return kPages[static_cast<size_t>(page - page::kFirstRows)];
}

QString textOf(const char16_t* text) {
  return QStringView(text).toString();
}

constexpr int kLongestName = 32;
constexpr int kLongestRange = 24;

}  // namespace

QString pageName(int page) {
  return textOf(namesOf(page).name);
}

std::vector<BenchTab> makeTabs(const DecoderDescription& description) {
  std::vector<BenchTab> tabs(kTabCount);
  tabs[0].caption = QStringLiteral("Allgemein");
  tabs[0].visible = true;
  tabs[1].caption = QStringLiteral("Fahren");
  tabs[1].visible = description.TYPE != DecoderDescription::kTypeWithoutDrive;
  int total = kFixedTabs;
  for (int page = page::kFirstRows; page <= page::kLast; ++page) {
    const PageNames& names = namesOf(page);
    const int count = description.pageCount[static_cast<size_t>(page)];
    const bool functions = names.firstTab == TabNumber::Functions;
    BenchTab tab{.page = page,
                 .ordinal = 1,
                 .caption = textOf(names.caption),
                 .visible = count > 0,
                 .funcMapEnabled = functions && description.FUNCMAP};
    tabs[static_cast<size_t>(names.firstTab)] = tab;
    if (count == 0) continue;
    const int needed = (count - 1) / kRowsPerTab + 1;
    for (int ordinal = 2; ordinal <= needed; ++ordinal) {
      if (total >= description.MAXTABS || total >= kTabCount) break;
      tab.ordinal = ordinal;
      tab.caption = QStringLiteral("%1 %2").arg(textOf(names.caption)).arg(ordinal);
      tabs[static_cast<size_t>(total++)] = tab;
    }
  }
  return tabs;
}

std::vector<PageRow> makeRows(DecoderDescription& description, const std::vector<BenchTab>& tabs) {
  // Tab numbers of each page, in order.
  std::array<std::vector<int>, page::kLast + 1> tabsOf;
  for (size_t tab = 0; tab < tabs.size(); ++tab) {
    if (tabs[tab].page > 0 && tabs[tab].visible) {
      tabsOf[static_cast<size_t>(tabs[tab].page)].push_back(static_cast<int>(tab));
    }
  }
  std::array<int, page::kLast + 1> used{};
  std::vector<PageRow> rows;
  for (int i = 1; i <= kHighestCvIndex; ++i) {
    const CvIndex cv(i);
    CvDescriptor& entry = description.info(cv);
    entry.cvRow = 0;
    if (!entry.exists() || entry.cvPage < page::kFirstRows) continue;
    const auto page = static_cast<size_t>(entry.cvPage);
    const int number = used[page] + 1;
    const auto tabOrdinal = static_cast<size_t>((number - 1) / kRowsPerTab);
    if (tabOrdinal >= tabsOf[page].size()) continue;
    used[page] = number;
    entry.cvRow = number;
    rows.push_back(
        {.cv = cv,
         .page = entry.cvPage,
         .number = number,
         .tab = tabsOf[page][tabOrdinal],
         .rowOnTab = (number - 1) % kRowsPerTab,
         .label = QStringLiteral("%1 (%2):")
                      .arg(entry.cvName.left(kLongestName), entry.cvRange.left(kLongestRange)),
         .labelTip = description.cvText(cv),
         .text = {},
         .bitEnabled = !entry.cvBits.isEmpty()});
  }
  return rows;
}

}  // namespace lokari
