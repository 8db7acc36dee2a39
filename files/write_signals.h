#pragma once

namespace quorvane {

// For the start of a program: a full quota, or a reader that has gone away, is then an error of the write
// that meets it instead of the end of the program.
void OutliveWriteErrors();

}  // namespace quorvane
