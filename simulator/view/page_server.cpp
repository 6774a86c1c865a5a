#include "view/page_server.h"

#include <httplib.h>
#include <sys/socket.h>

#include <chrono>
#include <future>
#include <thread>
#include <utility>

#include "view/event_text.h"
#include "view/guard.h"
#include "view/page.h"
#include "wire/system_error.h"

namespace k7sim {
namespace {

using namespace std::chrono_literals;

constexpr const char* kLoopback = "127.0.0.1";
// A browser that looks on holds a thread; the others are for pages and commands.
constexpr std::size_t kThreads = Exchange::kMostBrowsers + 7;
constexpr std::size_t kMostCommandBytes = 4096;
// After so long without a change a browser is told that the simulator still runs.
constexpr std::chrono::milliseconds kStillRuns = 2000ms;
// Longest that the end of the program waits for browsers.
constexpr std::chrono::milliseconds kMostStopping = 2000ms;

// Nothing but the page itself may be loaded, no other page may have it in a frame, where a user can
// be led to press its buttons, and none may read what it is told.
const httplib::Headers kHeaders = {
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'unsafe-inline'; style-src 'unsafe-inline'; "
     "connect-src 'self'; img-src data:; base-uri 'none'; form-action 'none'; "
     "frame-ancestors 'none'"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cache-Control", "no-store"}};

void Refuse(httplib::Response& response, int status, const std::string& why) {
  response.status = status;
  response.set_content(why + "\n", "text/plain");
}

// The library would let a second simulator listen on the same port and share its browsers. What is
// on its way to a browser that takes nothing is kept small; connections have it from their
// listener.
void SetListenOptions(socket_t socket) {
  const int on = 1;
  const int bytes = 64 * 1024;
  setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}

}  // namespace

struct PageServer::Http {
  Http(std::shared_ptr<Exchange> shared, std::string first)
      : exchange(std::move(shared)), hello(std::move(first)) {}

  const std::shared_ptr<Exchange> exchange;
  const std::string hello;
  httplib::Server server;
  std::thread listener;
  std::promise<void> stopped;  // kept once the listener and all its threads have ended
  int port = 0;

  httplib::Server::HandlerResponse Admit(const httplib::Request& request,
                                         httplib::Response& response) const {
    using Verdict = httplib::Server::HandlerResponse;
    const std::string host = request.get_header_value("Host");
    const std::string origin = request.get_header_value("Origin");
    const std::string site = request.get_header_value("Sec-Fetch-Site");
    if (request.get_header_value_count("Host") != 1 || !IsLoopbackHost(host)) {
      Refuse(response, 403, "This page is served by the names 127.0.0.1 and localhost alone.");
      return Verdict::Handled;
    }
    // A link on any page may lead to the page itself, which shows nothing to the one it came from.
    const bool opensPage = request.method == "GET" && request.path == "/";
    if (!IsOwnPage({host, origin, opensPage ? std::string_view() : std::string_view(site)})) {
      Refuse(response, 403, "Other pages have no access.");
      return Verdict::Handled;
    }
    return Verdict::Unhandled;
  }

  void ServeEvents(httplib::Response& response) {
    if (!exchange->Join()) {
      Refuse(response, 503, "Too many pages look at this simulator.");
      return;
    }
    response.set_chunked_content_provider(
        "text/event-stream",
        [this, greeted = false, place = ViewPlace{}](std::size_t, httplib::DataSink& sink) mutable {
          std::string text;
          // A browser that has lost the connection tries again after a second.
          if (!greeted) text = "retry: 1000\n" + EventText("hello", hello);
          const ViewFrame frame = exchange->Wait(place, greeted ? kStillRuns : 0ms);
          greeted = true;
          text += frame.IsEmpty() ? EventText("still", "{}") : FrameText(frame);
          if (!sink.write(text.data(), text.size())) return false;
          if (frame.ended) sink.done();
          return true;
        },
        [this](bool) { exchange->Leave(); });
  }

  void ServeControl(const httplib::Request& request, httplib::Response& response) {
    if (request.body.find_first_of("\r\n") != std::string::npos) {
      Refuse(response, 400, "one command at a time");
      return;
    }
    ViewCommand command{request.body, false, false, {}};
    switch (exchange->Ask(command)) {
      case AskResult::Busy:
        Refuse(response, 503, "too many commands wait");
        break;
      case AskResult::Ended:
        Refuse(response, 503, "the simulator ends");
        break;
      case AskResult::Answered:
        response.status = command.good ? 200 : 400;
        response.set_content(command.message, "text/plain; charset=utf-8");
        break;
    }
  }
};

PageServer::PageServer(std::shared_ptr<Exchange> exchange, std::string hello)
    : http_(std::make_unique<Http>(std::move(exchange), std::move(hello))) {
  httplib::Server& server = http_->server;
  Http* const http = http_.get();
  server.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  server.set_socket_options(SetListenOptions);
  server.set_default_headers(kHeaders);
  server.set_payload_max_length(kMostCommandBytes);
  // One request a connection, and short times, so that idle connections hold no thread for long and
  // the end of the program does not wait for them.
  server.set_keep_alive_max_count(1);
  server.set_keep_alive_timeout(1);
  server.set_read_timeout(1s);
  server.set_write_timeout(1s);
  server.set_tcp_nodelay(true);
  server.set_pre_routing_handler(
      [http](const httplib::Request& request, httplib::Response& response) {
        return http->Admit(request, response);
      });
  server.Get("/", [](const httplib::Request&, httplib::Response& response) {
    response.set_content(kPage.data(), kPage.size(), "text/html; charset=utf-8");
  });
  server.Get("/events", [http](const httplib::Request&, httplib::Response& response) {
    http->ServeEvents(response);
  });
  server.Post("/control", [http](const httplib::Request& request, httplib::Response& response) {
    http->ServeControl(request, response);
  });
}

PageServer::~PageServer() {
  if (!http_->listener.joinable()) return;
  http_->server.stop();
  if (http_->stopped.get_future().wait_for(kMostStopping) == std::future_status::ready) {
    http_->listener.join();
    return;
  }
  // The threads that remain touch nothing but this object and the exchange, which therefore stay.
  http_->listener.detach();
  [[maybe_unused]] Http* const left = http_.release();
}

bool PageServer::Open(int port, std::string& error) {
  httplib::Server& server = http_->server;
  const bool bound = port == 0 ? (port = server.bind_to_any_port(kLoopback)) > 0
                               : server.bind_to_port(kLoopback, port);
  if (!bound) return FailBySystem(error, "cannot listen on port " + std::to_string(port));
  http_->port = port;
  http_->listener = std::thread([http = http_.get()] {
    http->server.listen_after_bind();
    http->stopped.set_value();
  });
  // A server that is told to stop before it runs does not stop.
  while (!server.is_running()) std::this_thread::yield();
  return true;
}

std::string PageServer::Address() const {
  return "http://127.0.0.1:" + std::to_string(http_->port) + "/";
}

}  // namespace k7sim
