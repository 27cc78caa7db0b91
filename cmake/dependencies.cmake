# The libraries of the system, for the native build; the Windows build has none.

if(NOT WIN32)
  set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
  find_package(PkgConfig REQUIRED)
  find_package(LibXml2 REQUIRED) # LibXml2::LibXml2
  find_package(SQLite3 REQUIRED) # SQLite::SQLite3
  find_package(CLI11 REQUIRED) # CLI11::CLI11
  find_package(nlohmann_json REQUIRED) # nlohmann_json::nlohmann_json
  find_package(Threads REQUIRED) # Threads::Threads
  pkg_check_modules(libzip REQUIRED IMPORTED_TARGET GLOBAL libzip) # PkgConfig::libzip
endif()
