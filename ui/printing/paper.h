#pragma once

#include <QPageSize>
#include <QString>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "forms/platform.h"
#include "results/race_records.h"

class QPagedPaintDevice;
class QPainter;

namespace quorvane {

// The papers that the reports are made for.
inline constexpr std::array kPapers = {QPageSize::A4, QPageSize::Letter};
// "A4" or "Letter" in any letter case.
std::optional<QPageSize> PaperNamed(const QString& name);

enum class Report : std::uint8_t { Heat, Protest };

// Which report it is, and what it says of its own making.
struct Imprint {
  std::string program;  // name and version
  LocalDateTime printed;
  Report report = Report::Heat;
};

// How many pages of that size the report takes; one for a heat.
int PagesOf(const QSizeF& page, const RaceRecord& race, const Imprint& imprint);
// Page 1..PagesOf of the report. The page, in any unit, fills the target, in the painter's coordinates.
void DrawReport(QPainter& painter, const QSizeF& page, const QRectF& target, const RaceRecord& race,
                const Imprint& imprint, int number = 1);

// One report after the other, the whole sheet being the page, on a printer or into a PDF. Sets the device's
// paper. False when the device cannot be written to.
bool PutOnPaper(QPagedPaintDevice& device, const QPageSize& paper, const std::vector<RaceRecord>& races,
                const Imprint& imprint);

// Replaces the file in one step, unless it is one that a report must not replace (see WhyNotWrite): a file of
// `inUse`, such as the open project, or what is no file. Empty, or the reason why nothing was written.
std::string WritePdf(const std::string& path, const QPageSize& paper, const std::vector<RaceRecord>& races,
                     const Imprint& imprint, const std::vector<std::string>& inUse = {});

}  // namespace quorvane
