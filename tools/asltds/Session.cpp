#include "Session.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

/// The newest version of the protocol that is spoken here.
constexpr std::uint32_t kVersion74 = 0x74000004;

/// Who comes, and what for.
struct LoginRequest {
    std::uint32_t version = 0;  // the newest one that both sides speak
    std::size_t packetSize = 0;
    std::string user, password, database;

    /// Throws ProtocolError for a request that contradicts itself, and for a version before 7.1.
    static LoginRequest Parse(std::string_view message);
};

constexpr std::size_t kDirectory = 36;  // where the places of the texts stand
enum DirectoryEntry { kHost, kUser, kPassword, kProgram, kServer, kExtension, kLibrary, kLanguage, kDatabase };

std::string_view EntryOf(std::string_view message, int entry) {
    ByteReader directory(message);
    directory.Take(kDirectory + 4 * static_cast<std::size_t>(entry));
    const std::uint64_t offset = directory.Number(2);
    const std::uint64_t length = directory.Number(2);
    ByteReader part(message);
    part.Take(offset);
    return part.Take(2 * length);
}

/// Each byte was turned by half and crossed with A5.
std::string Revealed(std::string_view hidden) {
    std::string bytes(hidden);
    for (char& each : bytes) {
        const unsigned crossed = static_cast<unsigned char>(each) ^ 0xA5u;
        each = static_cast<char>((crossed >> 4 | crossed << 4) & 0xFF);
    }
    return bytes;
}

LoginRequest LoginRequest::Parse(std::string_view message) {
    ByteReader fixed(message);
    if (fixed.Number(4) != message.size()) throw ProtocolError("a login's length is not its own");
    LoginRequest request;
    request.version = std::min(static_cast<std::uint32_t>(fixed.Number(4)), kVersion74);
    if (request.version < 0x71000000) throw ProtocolError("a login asks for an old protocol");
    request.packetSize = fixed.Number(4);
    request.user = FromWide(EntryOf(message, kUser));
    request.password = FromWide(Revealed(EntryOf(message, kPassword)));
    request.database = FromWide(EntryOf(message, kDatabase));
    return request;
}

/// The answer to what is asked before the login: no encryption, one row set at a time.
std::string PreLoginAnswer() {
    struct Option {
        int name;
        std::string_view value;
    };
    using namespace std::string_view_literals;
    constexpr Option kOptions[] = {
        {0, "\x0F\x00\x07\xD0\x00\x00"sv},  // version
        {1, "\x02"sv},                      // encryption is not supported
        {2, "\x00"sv},                      // the instance asked for
        {4, "\x00"sv},                      // row sets side by side: no
    };
    std::size_t offset = 5 * std::size(kOptions) + 1;
    std::string places, values;
    for (const Option& option : kOptions) {
        const std::size_t numbers[] = {offset, option.value.size()};
        places += static_cast<char>(option.name);
        for (const std::size_t number : numbers) {
            places += static_cast<char>(number >> 8);
            places += static_cast<char>(number & 0xFF);
        }
        values += option.value;
        offset += option.value.size();
    }
    return places + '\xFF' + values;
}

enum TransactionRequest { kBegin = 5, kCommit = 7, kRollback = 8 };
constexpr std::uint8_t kAndBegin = 1;  // another one after this

Done ClosingOf(MessageType type) { return type == MessageType::RemoteCall ? Done::Procedure : Done::Statement; }

}  // namespace

Session::Session(const SessionSetup& setup, Socket& socket)
    : setup_(setup),
      packets_(socket),
      writer_(packets_),
      database_(setup.folder, writer_),
      rows_(packets_, writer_, setup.faults, setup.goAway),
      statements_(setup.folder, database_, writer_, rows_, setup.dayFirst),
      calls_(setup.folder, database_, writer_, statements_) {
    statements_.SetCalls(calls_);
}

void Session::Run() noexcept {
    try {
        Serve();
    } catch (const ConnectionEnded&) {
        return;
    } catch (const std::exception&) {  // a message that is none: there is nothing to say to who sends such
        return;
    }
}

void Session::Serve() {
    if (!LogIn()) return;
    for (;;) Answer(packets_.Read());
}

bool Session::LogIn() {
    Message message = packets_.Read();
    if (message.type == MessageType::PreLogin) {
        packets_.Put(PreLoginAnswer());
        packets_.End();
        message = packets_.Read();
    }
    if (message.type != MessageType::Login) throw ProtocolError("a connection begins without a login");
    return Accept(message.bytes);
}

bool Session::Accept(std::string_view message) {
    const LoginRequest login = LoginRequest::Parse(message);
    writer_.SetVersion(login.version);
    const bool known =
        setup_.user.empty() || (text::EqualNoCase(login.user, setup_.user) && login.password == setup_.password);
    if (!known) {
        Refuse({kLoginFailed, "Accesso non riuscito per l'utente '" + login.user + "'.", 14});
        return false;
    }
    const std::string wanted = login.database.empty() ? ServedFolder::kMaster : login.database;
    try {
        database_.Use(wanted);
    } catch (const Error&) {
        Refuse({kCannotOpenDatabase, "Il database \"" + wanted + "\" chiesto all'accesso non si può aprire.", 11});
        return false;
    }
    packets_.SetPacketSize(login.packetSize == 0 ? PacketStream::kDefaultSize : login.packetSize);
    writer_.CollationChanged();
    writer_.LoginAccepted();
    writer_.PacketSizeChanged(packets_.PacketSize(), PacketStream::kDefaultSize);
    writer_.Close(Done::Statement);
    writer_.Finish();
    return true;
}

void Session::Refuse(const ServerError& error) {
    writer_.Failed(error);
    writer_.CloseFailed(Done::Statement);
    writer_.Finish();
}

void Session::Answer(const Message& message) {
    const ByteReader reader(message.bytes);
    try {
        switch (message.type) {
            case MessageType::Batch:
                RunBatch(reader);
                break;
            case MessageType::RemoteCall:
                RunCalls(reader);
                break;
            case MessageType::Transaction:
                RunTransaction(reader);
                break;
            case MessageType::Attention:
                writer_.CloseCancelled();
                break;
            default:
                throw ProtocolError("a message has an unknown type");
        }
    } catch (const Cancelled&) {
        writer_.CloseCancelled();
    } catch (const Error& error) {
        writer_.Failed(ServerError::From(error));
        writer_.CloseFailed(ClosingOf(message.type));
    }
    writer_.Finish();
}

void Session::GoAway() {
    setup_.goAway();
    throw ConnectionEnded();
}

void Session::SkipHeaders(ByteReader& reader) const {
    if (!writer_.HasLargeTexts()) return;  // there are none before version 7.2
    const std::uint64_t length = reader.Number(4);
    if (length < 4) throw ProtocolError("the headers of a message are too short");
    reader.Take(length - 4);
}

void Session::RunBatch(ByteReader reader) {
    SkipHeaders(reader);
    const std::string text = FromWide(reader.Rest());
    const std::string& fatal = setup_.faults.endAtStatement;
    if (!fatal.empty() && text.find(fatal) != std::string::npos) GoAway();
    const Tokens batch = data::Tokenize(text);
    if (batch.size() == 1) writer_.Close(Done::Statement);
    statements_.RunBatch(batch, Done::Statement);
}

void Session::RunCalls(ByteReader reader) {
    SkipHeaders(reader);
    while (!reader.AtEnd()) calls_.Run(Call::Read(reader, writer_.HasLargeTexts()));
}

void Session::RunTransaction(ByteReader reader) {
    SkipHeaders(reader);
    const std::uint64_t request = reader.Number(2);
    if (request == kBegin) {
        database_.Begin();
    } else if (request == kCommit || request == kRollback) {
        if (request == kCommit && setup_.faults.endAtCommit) GoAway();
        request == kCommit ? database_.Commit() : database_.Rollback();
        reader.Take(reader.Byte());  // the transaction's name
        if ((reader.Byte() & kAndBegin) != 0) database_.Begin();
    } else {
        throw ServerError(kOther, "La richiesta " + std::to_string(request) + " sulle transazioni non è ammessa.");
    }
    writer_.Close(Done::Statement);
    if (request != kCommit || !setup_.faults.endAfterCommit) return;
    writer_.Finish();
    GoAway();
}

}  // namespace vlm::host::tds
