#include "host/tds/TdsServer.h"

namespace vlm::host::tds {

TdsServer::TdsServer(const std::string& folder, const Options& options)
    : folder_(folder),
      listener_(Socket::Listen(options.port)),
      setup_{folder_, options.user, options.password, options.endAfterRows, [this] { GoAway(); }} {
    accepting_ = std::thread([this] { AcceptClients(); });
}

TdsServer::~TdsServer() {
    GoAway();
    accepting_.join();
    for (Client& client : clients_) client.thread.join();
}

void TdsServer::GoAway() noexcept {
    const std::lock_guard lock(mutex_);
    gone_ = true;
    listener_.Shutdown();
    for (Client& client : clients_) client.socket.Shutdown();
}

void TdsServer::AcceptClients() {
    for (int handle = 0; (handle = listener_.Accept()) >= 0;) Start(handle);
}

void TdsServer::Start(int handle) {
    const std::lock_guard lock(mutex_);
    ForgetEnded();
    Client& client = clients_.emplace_back(handle);
    if (gone_) client.socket.Shutdown();
    client.thread = std::thread([this, &client] {
        Session(setup_, client.socket).Run();
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
