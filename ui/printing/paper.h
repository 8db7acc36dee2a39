#pragma once

#include <QString>
#include <string>
#include <vector>

#include "console/heat_printer.h"
#include "forms/platform.h"
#include "print/surface.h"

class QPagedPaintDevice;
class QSizeF;

namespace quorvane {

// The papers that the heat report is made for.
enum class Paper { A4, Letter };

// "A4" or "Letter" in any letter case; false for anything else.
bool PaperNamed(const std::string& name, Paper& paper);
const char* PaperName(Paper paper);
QSizeF PaperInches(Paper paper);
// What the country of this computer uses.
Paper UsualPaper();

// What a report says of its own making.
struct Imprint {
  std::string program;  // name and version
  LocalDateTime printed;
};

// One report a page, the whole sheet being the page, on a printer or into a PDF. Sets the device's paper.
// False when the device cannot be written to.
bool PutOnPaper(QPagedPaintDevice& device, int dotsPerInch, Paper paper, const std::vector<RaceRecord>& races,
                const Imprint& imprint);

// Replaces the file in one step, unless it is one that a report must not replace (see WhyNotWrite): a file of
// `inUse`, such as the open project, or what is no file. An empty text, or the reason why nothing was
// written.
QString WritePdf(const QString& path, Paper paper, const std::vector<RaceRecord>& races,
                 const Imprint& imprint, const std::vector<std::string>& inUse = {});

}  // namespace quorvane
