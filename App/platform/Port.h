#pragma once

namespace tollbeam {

/// An interface to one service of the operating system; each system has a backend of its own.
///
/// What holds for every port, where an operation does not say otherwise: It is for the main thread
/// alone. It never throws and never blocks on another process; what is missing or fails is an
/// absent, false or empty value. A callback comes on the main thread, after the call that was given
/// it has returned. Ports are handed over by reference and outlive their users.
class Port {
 public:
  Port() = default;
  Port(const Port&) = delete;
  Port& operator=(const Port&) = delete;
  virtual ~Port() = default;
};

}  // namespace tollbeam
