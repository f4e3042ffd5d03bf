# CLI11::CLI11 and nlohmann_json::nlohmann_json. Both are header-only, and Debian packages them for the build computer
# only; of that computer's headers, a cross compiler must see these two and no others.
if(NOT CMAKE_CROSSCOMPILING)
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  return()
endif()

function(add_header_only_library target folder header)
  find_path(place ${header} PATHS /usr/include /usr/local/include NO_DEFAULT_PATH NO_CACHE REQUIRED)
  set(headers ${PROJECT_BINARY_DIR}/headers/${folder})
  file(MAKE_DIRECTORY ${headers})
  file(CREATE_LINK ${place}/${folder} ${headers}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} SYSTEM INTERFACE ${headers})
endfunction()

add_header_only_library(CLI11::CLI11 CLI CLI/CLI.hpp)
add_header_only_library(nlohmann_json::nlohmann_json nlohmann nlohmann/json.hpp)
