tollbeam_test(power_readings_tests
  SOURCES
    support/StdMain.cpp
    platform/freedesktop/BatteryPacksTest.cpp
    platform/freedesktop/PowerSuppliesTest.cpp
    platform/freedesktop/PowerTableCacheTest.cpp
    platform/freedesktop/PowerTableTest.cpp
    platform/freedesktop/SmartBatteryTest.cpp
    platform/freedesktop/SupplyReadingTest.cpp
    platform/freedesktop/UPowerReadingTest.cpp
  LIBS tollbeam_power_readings)

