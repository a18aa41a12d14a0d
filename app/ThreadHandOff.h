// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

// Qt's thread pool and queued calls hand work between threads through
// futex-based locks that ThreadSanitizer cannot see. These mark the same
// edges for it (and compile to nothing elsewhere): what one thread did before
// release(x) happens before what another does after acquire(x).
namespace ThreadHandOff {

inline void release([[maybe_unused]] const void *edge)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_release(const_cast<void *>(edge));
#endif
}

inline void acquire([[maybe_unused]] const void *edge)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_acquire(const_cast<void *>(edge));
#endif
}

// Travels inside a job or a queued call as its last member. Its own address
// is the edge, so neither side reads anything to mark it: it is moved into
// place after everything before it, and that move releases; the receiving
// side calls arrive() before touching anything else, and a call dropped
// unrun arrives as it is destroyed (last members go first). A queued call
// may be destroyed by the thread that posted it, after it ran: depart()
// hands what the call did back before it lets go.
class Edge
{
public:
    Edge() = default;
    Edge(const Edge &) { release(this); }
    Edge(Edge &&) noexcept { release(this); }
    Edge &operator=(const Edge &) = delete;
    ~Edge() { acquire(this); }

    void arrive() const { acquire(this); }
    void depart() const { release(this); }
};

} // namespace ThreadHandOff
