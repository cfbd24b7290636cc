#include "Platform/gtk/GLibMainQueue.hpp"

#include "Platform/Subscription.hpp"

#include <glibmm/main.h>

namespace corvanta {

namespace {

class Timeout final : public MainQueue::Handle {
public:
    explicit Timeout(const sigc::connection& connection) : connection_(connection) {}

private:
    Subscription connection_;
};

} // namespace

MainQueue::Duration GLibMainQueue::now() const {
    return std::chrono::duration_cast<Duration>(std::chrono::microseconds(g_get_monotonic_time()));
}

void GLibMainQueue::async(Work work) {
    Glib::signal_idle().connect_once([work = std::move(work)] { work(); }, Glib::PRIORITY_DEFAULT);
}

std::unique_ptr<MainQueue::Handle> GLibMainQueue::after(Duration delay, Work work) {
    return std::make_unique<Timeout>(Glib::signal_timeout().connect(
        [work = std::move(work)] {
            // The work may drop the handle, and with it this very closure; the copy outlives the call.
            const Work running = work;
            running();
            return false;
        },
        static_cast<unsigned>(delay.count())));
}

} // namespace corvanta
