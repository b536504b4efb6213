#include "asltds/TdsServer.h"

#include <atomic>
#include <list>
#include <mutex>
#include <thread>

#include "Session.h"

namespace vlm::host::tds {

/// The connections, and who accepts them.
class TdsServer::Clients {
public:
    Clients(const std::string& folder, const Options& options)
        : folder_(folder), listener_(Socket::Listen(options.port)), setup_{folder_,          options.user,
                                                                           options.password, options.dayFirst,
                                                                           options.faults,   {}} {
        accepting_ = std::thread([this] { Accept(); });
    }
    Clients(const Clients&) = delete;
    Clients& operator=(const Clients&) = delete;
    ~Clients() {
        BreakOff(nullptr);
        accepting_.join();
        for (Client& client : clients_) client.thread.join();
    }

    int Port() const { return listener_.Port(); }

    /// `last` is told at last, so that its client finds the others gone.
    void BreakOff(Socket* last) noexcept {
        const std::lock_guard lock(mutex_);
        gone_ = true;
        listener_.Shutdown();
        for (Client& client : clients_) {
            if (&client.socket != last) client.socket.Shutdown();
        }
        if (last != nullptr) last->Shutdown();
    }

private:
    struct Client {
        Client(int handle, const SessionSetup& settings) : socket(handle), setup(settings) {}
        Socket socket;
        SessionSetup setup;
        std::thread thread;
        std::atomic<bool> ended = false;
    };

    void Accept() {
        for (int handle = 0; (handle = listener_.Accept()) >= 0;) Start(handle);
    }

    void Start(int handle) {
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

    void ForgetEnded() {
        clients_.remove_if([](Client& client) {
            if (client.ended) client.thread.join();
            return client.ended.load();
        });
    }

    ServedFolder folder_;
    Socket listener_;
    SessionSetup setup_;
    std::mutex mutex_;  // of what follows
    bool gone_ = false;
    std::list<Client> clients_;
    std::thread accepting_;
};

TdsServer::TdsServer(const std::string& folder, const Options& options)
    : clients_(std::make_unique<Clients>(folder, options)) {}

TdsServer::~TdsServer() = default;

int TdsServer::Port() const { return clients_->Port(); }

void TdsServer::GoAway() noexcept { clients_->BreakOff(nullptr); }

}  // namespace vlm::host::tds
