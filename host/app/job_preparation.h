// Between the drawing and the job: colours, order of the strokes, estimate, preview, frame.
#pragma once

#include <cstdint>

#include "app/session.h"
#include "args/arguments.h"
#include "core/job_plan.h"
#include "core/job_runner.h"
#include "drawing/drawing.h"

namespace k7host {

// Shows the settings dialog with the colours of the drawing, and leaves out the strokes of those
// that the user has switched off there. The result of the dialog. [host]
std::int64_t ShowSettingsWithColours(Session& session, Drawing& drawing);

// Puts the strokes in the order in which they are cut: by colour, if the engrave settings say so,
// and shorter ways first, if the user wants it. Prints what that saves. [host]
void ArrangeStrokes(Session& session, const Arguments& arguments, Drawing& drawing);

// Estimates the job, from where the head stands or, with `homesFirst`, from the limit switches, on
// top of what the driver says of its travels and cuts (`runSeconds`, 0 for unknown); prints the
// estimate and returns it: seconds, 0 for unknown. [host]
std::uint32_t EstimateAndPrint(Session& session, const JobPlan& plan, const Table& table,
                               const JobOptions& options, bool homesFirst,
                               std::uint32_t runSeconds);

// Writes the preview that the arguments ask for, if any. An exit code, explained when it is not
// kExitOk.
int WritePreview(const Arguments& arguments, const JobPlan& plan, const Table& table);

// Drives around the job with the cutter up. Where there is a console the user then goes on by Enter
// or ends by Esc. An exit code, explained when it is not kExitOk. [host]
int ShowFrame(Session& session, const JobPlan& plan, JobObserver& observer);

}  // namespace k7host
