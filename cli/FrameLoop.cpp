#include "cli/FrameLoop.h"

#include "cli/CliError.h"
#include "cli/Interrupt.h"
#include "cli/OutputWriter.h"

#include <oneapi/tbb/task_group.h>

#include <exception>
#include <utility>

namespace cli {

namespace {

CliError forFrame(const CliError& e, int frame) {
    return CliError(e.code(), "frame " + std::to_string(frame) + ": " + e.what());
}

CliError interrupted(int frame) {
    const int signal = interruptSignal();
    return CliError(static_cast<ExitCode>(128 + signal), std::string("interrupted by ") + signalName(signal) +
                                                             " at frame " + std::to_string(frame) +
                                                             "; the frames before it are complete");
}

// Converts, flattens, encodes and writes one frame at a time, on a oneTBB worker when
// overlapping, in the order given.
class FrameWriter {
public:
    FrameWriter(const FrameStyle& style, bool overlap) : style_(style), overlap_(overlap) {}
    ~FrameWriter() { group_.wait(); }  // failures were reported by finish(), or are moot
    FrameWriter(const FrameWriter&) = delete;
    FrameWriter& operator=(const FrameWriter&) = delete;

    // Starts writing `frame`; the previous write must be finished.
    void start(RenderedFrame frame, const FrameJob& job) {
        frame_ = std::move(frame);
        job_ = job;
        busy_ = true;
        if (overlap_)
            group_.run([this] { write(); });
        else
            write();
    }

    // Waits for the write under way, if any; returns its frame number, or throws its failure.
    std::optional<int> finish() {
        if (!busy_) return std::nullopt;
        group_.wait();
        busy_ = false;
        frame_ = RenderedFrame();
        if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
        return job_.frame;
    }

private:
    void write() {
        try {
            if (writeDirect()) return;
            host::Image image = toImage(frame_);
            if (style_.flatten_over) flattenOver(image, *style_.flatten_over);
            writeFrame(image, job_.path, style_.bit_depth, style_.encoding);
        } catch (const CliError& e) {
            error_ = std::make_exception_ptr(forFrame(e, job_.frame));
        } catch (const std::exception& e) {
            const CliError failed(kExitWriteFailed, "cannot write " + job_.path + ": " + e.what());
            error_ = std::make_exception_ptr(forFrame(failed, job_.frame));
        }
    }

    // A frame with its alpha kept goes from the world straight to the file, without the float
    // frame in between: an integer world to PNG channels, a float world to OpenEXR. The same
    // bytes for less work. False when the frame needs the float path.
    bool writeDirect() {
        if (style_.flatten_over) return false;
        if (style_.bit_depth == 32) {
            const std::optional<host::FloatWorldFrame> world = toFloatWorld(frame_);
            if (world) writeFrame(*world, job_.path, style_.encoding);
            return world.has_value();
        }
        const std::optional<host::QuantisedImage> frame = toQuantised(frame_, style_.bit_depth == 16 ? 16 : 8);
        if (frame) writeFrame(*frame, job_.path, style_.encoding);
        return frame.has_value();
    }

    const FrameStyle& style_;
    const bool overlap_;
    tbb::task_group group_;
    RenderedFrame frame_;
    FrameJob job_;
    bool busy_ = false;
    std::exception_ptr error_;
};

void finishWrite(FrameWriter& writer, Progress& progress) {
    if (const std::optional<int> frame = writer.finish()) progress.endFrame(*frame);
}

// Once interrupted, nothing new starts: the write under way finishes (or reports its failure)
// and the frame about to start is named as the interrupted one.
void stopIfInterrupted(FrameWriter& writer, Progress& progress, int frame) {
    if (!interruptSignal()) return;
    finishWrite(writer, progress);
    throw interrupted(frame);
}

RenderedFrame renderOne(RenderSession& session, const JobPlan& plan, const FrameJob& job, FrameWriter& writer,
                      Progress& progress) {
    try {
        return session.render(job.seconds, plan.bit_depth, plan.downsample);
    } catch (const CliError& e) {
        finishWrite(writer, progress);  // the frame before is complete, or its failure comes first
        stopIfInterrupted(writer, progress, job.frame);  // a cancelled render is no failure
        throw forFrame(e, job.frame);
    }
}

}  // namespace

void renderFrames(RenderSession& session, const JobPlan& plan, const FrameStyle& style, bool overlap,
                  Progress& progress) {
    const CancelOnInterrupt cancel(session.host().faults());
    FrameWriter writer(style, overlap);
    try {
        for (const FrameJob& job : plan.jobs) {
            stopIfInterrupted(writer, progress, job.frame);
            progress.beginFrame(job.frame);
            RenderedFrame frame = renderOne(session, plan, job, writer, progress);
            finishWrite(writer, progress);
            stopIfInterrupted(writer, progress, job.frame);
            writer.start(std::move(frame), job);
        }
        finishWrite(writer, progress);
    } catch (...) {
        progress.clear();
        throw;
    }
}

}  // namespace cli
