#include "asltds/TdsServer.h"

namespace vlm::host::tds {

TdsServer::TdsServer(const std::string& folder, const Options& options)
    : folder_(folder), listener_(Socket::Listen(options.port)), setup_{folder_,          options.user,
                                                                       options.password, options.dayFirst,
                                                                       options.faults,   {}} {
    accepting_ = std::thread([this] { AcceptClients(); });
}

TdsServer::~TdsServer() {
    GoAway();
    accepting_.join();
    for (Client& client : clients_) client.thread.join();
}

void TdsServer::BreakOff(Socket* last) noexcept {
    const std::lock_guard lock(mutex_);
    gone_ = true;
    listener_.Shutdown();
    for (Client& client : clients_) {
        if (&client.socket != last) client.socket.Shutdown();
    }
    if (last != nullptr) last->Shutdown();
}

void TdsServer::AcceptClients() {
    for (int handle = 0; (handle = listener_.Accept()) >= 0;) Start(handle);
}

void TdsServer::Start(int handle) {
    const std::lock_guard lock(mutex_);
    ForgetEnded();
    Client& client = clients_.emplace_back(handle, setup_);
    client.setup.goAway = [this, &client] { BreakOff(&client.socket); };
    if (gone_) client.socket.Shutdown();
    client.thread = std::thread([&client] {
        Session(client.setup, client.socket).Run();
        client.socket.Shutdown();
        client.ended = true;
    });
}

void TdsServer::ForgetEnded() {
    clients_.remove_if([](Client& client) {
        if (client.ended) client.thread.join();
        return client.ended.load();
    });
}

}  // namespace vlm::host::tds
