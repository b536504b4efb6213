#include "posix/MissingHost.h"

#include "values/Error.h"

namespace vlm::server {

std::unique_ptr<DefaultHost> MakeDefaultHost() { return std::make_unique<MissingHost>(); }

void MissingHost::Refuse(const char* service) {
    throw Error(std::string("L'applicazione ospite non ha fornito i suoi servizi (") + service + ").");
}

ui::Answer MissingHost::Toolkit::Show(const ui::Message& message) {
    // Nobody sees the message, so its text goes to who called.
    throw Error(message.text);
}

}  // namespace vlm::server
