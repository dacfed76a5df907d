#include "reports/rzk_merge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace lokari {
namespace {

RzkVehicle vehicle(int address, const QString& name = QStringLiteral("neu")) {
  return {.shortName = name, .longName = {}, .address = static_cast<qint16>(address)};
}

/// Old records and what the merge makes of them.
class Merged {
 public:
  explicit Merged(const std::vector<QByteArray>& old, const std::vector<RzkVehicle>& vehicles) {
    size_t next = 0;
    RzkMerge merge(
        [&]() -> std::optional<QByteArray> {
          return next < old.size() ? std::optional(old[next++]) : std::nullopt;
        },
        [this](const QByteArray& record) { written.push_back(record); });
    for (const RzkVehicle& each : vehicles) merge.add(each);
    count = merge.finish();
  }

  std::vector<int> addresses() const {
    std::vector<int> result;
    for (size_t i = 1; i < written.size(); ++i) result.push_back(rzkAddress(written[i]));
    return result;
  }

  std::vector<QByteArray> written;
  int count = 0;
};

std::vector<QByteArray> oldFile(std::initializer_list<int> addresses) {
  std::vector<QByteArray> records;
  for (const int address : addresses) records.push_back(rzkRecord(vehicle(address, "alt")));
  return records;
}

TEST(RzkMergeTest, ANewFileIsAHeadAndOneRecordForEachAddress) {
  std::vector<QByteArray> written;
  RzkMerge merge({}, [&](const QByteArray& record) { written.push_back(record); });
  for (const int address : {3, 3, 17, 1000}) merge.add(vehicle(address));
  EXPECT_EQ(merge.finish(), 3);
  ASSERT_EQ(written.size(), 4U);
  EXPECT_EQ(written[0], rzkHead());
  EXPECT_EQ(written[3], rzkRecord(vehicle(1000)));
}

TEST(RzkMergeTest, AnAddressOfTheOldFileKeepsTheOldRecord) {
  const Merged merged(oldFile({3, 17}), {vehicle(3), vehicle(5), vehicle(17), vehicle(20)});
  EXPECT_EQ(merged.addresses(), (std::vector<int>{3, 5, 17, 20}));
  EXPECT_EQ(merged.count, 2);
  EXPECT_TRUE(merged.written[1].startsWith("alt"));
  EXPECT_TRUE(merged.written[2].startsWith("neu"));
  EXPECT_TRUE(merged.written[3].startsWith("alt"));
}

TEST(RzkMergeTest, AnAddressOfTheOldFileAloneStays) {
  const Merged merged(oldFile({1, 4, 9}), {vehicle(4)});
  EXPECT_EQ(merged.addresses(), (std::vector<int>{1, 4, 9}));
  EXPECT_EQ(merged.count, 0);
}

TEST(RzkMergeTest, TwoCollectionsOfAnOldAddressAddNothing) {
  const Merged merged(oldFile({3}), {vehicle(3), vehicle(3)});
  EXPECT_EQ(merged.addresses(), std::vector<int>{3});
  EXPECT_EQ(merged.count, 0);
}

TEST(RzkMergeTest, DoublesInTheOldFileStay) {
  const Merged merged(oldFile({3, 3, 5}), {vehicle(3), vehicle(4)});
  EXPECT_EQ(merged.addresses(), (std::vector<int>{3, 3, 4, 5}));
  EXPECT_EQ(merged.count, 1);
}

TEST(RzkMergeTest, AddressZeroInAnOldRecordSortsFirstAndStays) {
  const Merged merged(oldFile({0, 7}), {vehicle(3)});
  EXPECT_EQ(merged.addresses(), (std::vector<int>{0, 3, 7}));
}

TEST(RzkMergeTest, OldRecordsAreCopiedAsBytes) {
  QByteArray strange(52, '\xFF');
  strange[50] = 9;
  strange[51] = 0;
  const Merged merged({strange}, {vehicle(3), vehicle(20)});
  ASSERT_EQ(merged.written.size(), 4U);
  EXPECT_EQ(merged.written[2], strange);
}

TEST(RzkMergeTest, AnyFileAndAnyDatabaseGiveTheUnionWithTheOldOnesFirst) {
  std::mt19937 random(20261121);
  for (int round = 0; round < 500; ++round) {
    const auto sorted = [&random] {
      std::vector<int> result(random() % 40);
      for (int& each : result) each = static_cast<int>(random() % 60);
      std::sort(result.begin(), result.end());
      return result;
    };
    std::vector<int> oldAddresses = sorted();
    oldAddresses.erase(std::unique(oldAddresses.begin(), oldAddresses.end()), oldAddresses.end());
    const std::vector<int> newAddresses = sorted();
    std::map<int, QByteArray> expected;
    std::vector<RzkVehicle> vehicles;
    for (size_t i = 0; i < newAddresses.size(); ++i) {
      vehicles.push_back(vehicle(newAddresses[i], QString::number(i)));
      expected.emplace(newAddresses[i], rzkRecord(vehicles.back()));
    }
    std::vector<QByteArray> old;
    for (const int address : oldAddresses) {
      QByteArray record(52, '\0');
      for (char& byte : record) byte = static_cast<char>(random());
      record[50] = static_cast<char>(address);
      record[51] = 0;
      old.push_back(record);
      expected[address] = record;
    }
    const Merged merged(old, vehicles);
    std::vector<QByteArray> wanted{rzkHead()};
    for (const auto& [address, record] : expected) wanted.push_back(record);
    ASSERT_EQ(merged.written, wanted) << "round " << round;
    EXPECT_EQ(merged.count, static_cast<int>(expected.size() - old.size()));
  }
}

}  // namespace
}  // namespace lokari
