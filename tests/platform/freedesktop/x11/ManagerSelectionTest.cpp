#include "platform/freedesktop/x11/ManagerSelection.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/OtherProgram.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::OtherProgram;
using test::waitFor;

const QByteArray kSelection = "_TOLLBEAM_TEST_S";
const QByteArray kOnThisScreen = kSelection + '0';

class ManagerSelectionTest : public testing::Test {
 protected:
  void begin() {
    selection.emplace(*XServer::ofApplication(), kSelection);
    QObject::connect(&*selection, &ManagerSelection::ownerChanged, [this] { ++owners; });
    QObject::connect(&*selection, &ManagerSelection::propertyChanged,
                     [this](xcb_atom_t property) { properties.push_back(property); });
  }
  [[nodiscard]] bool ownerBecomes(xcb_window_t window) {
    return waitFor([&] { return selection->window() == window; });
  }

  std::optional<OtherProgram> manager{std::in_place};
  std::optional<ManagerSelection> selection;
  int owners = 0;
  std::vector<xcb_atom_t> properties;
};

TEST_F(ManagerSelectionTest, FindsAnOwnerThatIsThereAlready) {
  const auto owner = manager->own(kOnThisScreen);
  begin();
  EXPECT_EQ(selection->window(), owner);
}

TEST_F(ManagerSelectionTest, HasNoOwnerWhenOnlyAnotherScreenHasOne) {
  manager->own(kSelection + '7');
  begin();
  EXPECT_EQ(selection->window(), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(ManagerSelectionTest, FollowsAnOwnerThatComesAndGoes) {
  begin();
  const auto owner = manager->own(kOnThisScreen);
  manager->announce(kOnThisScreen, owner);
  EXPECT_TRUE(ownerBecomes(owner));
  EXPECT_EQ(owners, 1);
  manager.reset();
  EXPECT_TRUE(ownerBecomes(XCB_WINDOW_NONE));
  EXPECT_EQ(owners, 2);
}

TEST_F(ManagerSelectionTest, FollowsAnOwnerThatReplacesAnother) {
  const auto first = manager->own(kOnThisScreen);
  begin();
  OtherProgram successor;
  const auto second = successor.own(kOnThisScreen);
  manager->destroy(first);
  EXPECT_TRUE(ownerBecomes(second));
  EXPECT_EQ(owners, 1);
}

TEST_F(ManagerSelectionTest, IgnoresOtherSelectionsAndRepeatedAnnouncements) {
  const auto owner = manager->own(kOnThisScreen);
  begin();
  manager->announce("_TOLLBEAM_OTHER_S0", manager->own("_TOLLBEAM_OTHER_S0"));
  manager->announce(kOnThisScreen, owner);
  // Arrives after all that was sent before.
  manager->set(owner, "_MARK", XCB_ATOM_CARDINAL, {1});
  ASSERT_TRUE(waitFor([&] { return !properties.empty(); }));
  EXPECT_EQ(owners, 0);
  EXPECT_EQ(selection->window(), owner);
}

TEST_F(ManagerSelectionTest, ReportsPropertiesOfTheOwnerOnly) {
  const auto owner = manager->own(kOnThisScreen);
  begin();
  const auto stranger = manager->window({0, 0, 10, 10}, 0);
  manager->set(stranger, "_STRANGE", XCB_ATOM_CARDINAL, {1});
  manager->set(owner, "_ONE", XCB_ATOM_CARDINAL, {1});
  manager->set(owner, "_TWO", XCB_ATOM_CARDINAL, {1});
  ASSERT_TRUE(waitFor([&] { return properties.size() >= 2; }));
  EXPECT_EQ(properties, (std::vector{manager->atom("_ONE"), manager->atom("_TWO")}));
}

}  // namespace
}  // namespace tollbeam
