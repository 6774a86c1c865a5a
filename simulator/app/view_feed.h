// Tells the page of --view what the machine is and does, and carries out what its buttons ask for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/options.h"
#include "app/simulator.h"
#include "app/transcript.h"
#include "view/exchange.h"
#include "view/page_server.h"

namespace k7sim {

class ViewFeed final : public TranscriptListener {
 public:
  // `links`: number and name of each link.
  ViewFeed(const Options& options, Simulator& simulator,
           std::vector<std::pair<int, std::string>> links);
  ~ViewFeed() override;

  // Serves the page from now on. False with one line in `error` when the port cannot be used.
  bool Open(std::string& error) { return server_.Open(options_.viewPort, error); }
  // Tells the user where the page is: "view ADDRESS".
  std::string Where() const { return "view " + server_.Address(); }

  // Carries out one control line as the control pipe does: true when it was good, otherwise with
  // the reason in `message`.
  using RunLine = std::function<bool(const std::string& line, std::string& message)>;
  // Carries out what the page asks for, and tells it what has changed.
  void Serve(const RunLine& run, TimeUs nowUs);
  // Tells the page the last state, and that this was the end.
  void End(TimeUs nowUs);

  // What the loop waits for: a descriptor, and the wire time at which `Serve` has something to
  // tell.
  int WakeFd() const { return exchange_->WakeFd(); }
  TimeUs NextDue() const;

 private:
  void OnTranscriptLine(TimeUs machineUs, char mark, std::string_view link,
                        std::string_view text) override;
  void Publish(TimeUs nowUs);
  std::string State() const;

  const Options& options_;
  Simulator& simulator_;
  std::vector<std::pair<int, std::string>> links_;
  std::shared_ptr<Exchange> exchange_ = std::make_shared<Exchange>();
  PageServer server_;
  std::deque<WireLine> lines_;  // that have passed since the last time the page was told
  std::uint64_t lineCount_ = 0;
  std::string summary_;  // empty until the end
  TimeUs toldUs_ = -1;   // wire time; -1: nothing has been told
};

}  // namespace k7sim
