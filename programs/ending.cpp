#include "programs/ending.h"

#include <exception>
#include <iostream>

#include "files/file_ops.h"

namespace quorvane {

int RunProgram(const std::string& program, const std::function<int()>& work) {
  OutliveWriteErrors();
  try {
    return work();
  } catch (const Ending& ending) {
    (ending.status == 0 ? std::cout : std::cerr) << ending.text << std::flush;
    return ending.status == 0 && !std::cout ? 1 : ending.status;
  } catch (const std::exception& error) {
    std::cerr << program << ": " << error.what() << std::endl;
    return 2;
  }
}

}  // namespace quorvane
