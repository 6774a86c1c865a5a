// Serves the page to browsers on the loopback, on threads of its own.
#pragma once

#include <memory>
#include <string>

#include "view/exchange.h"

namespace k7sim {

class PageServer {
 public:
  // `hello`: what does not change while the simulator runs, as JSON; the first that a browser is
  // told.
  PageServer(std::shared_ptr<Exchange> exchange, std::string hello);
  // Stops the threads; the exchange must have ended. One that a browser keeps busy is waited for no
  // longer than two seconds and then left to the end of the program.
  ~PageServer();

  // Serves from now on. False with one line in `error` when the port cannot be used.
  bool Open(int port, std::string& error);

  // The address for a browser.
  std::string Address() const;

 private:
  struct Http;
  std::unique_ptr<Http> http_;
};

}  // namespace k7sim
