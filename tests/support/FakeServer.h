#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "database/Connection.h"
#include "support/FakeConnection.h"
#include "values/Error.h"

namespace vlm::test {

/// A server of databases that takes down what it is told, and fails once when it is asked to.
class FakeServer {
public:
    static constexpr const char* kFailure = "il server non risponde";

    std::vector<std::string> databases = {"master", "Altro"};
    std::vector<std::string> calls;  // what was asked of which database, in order
    std::size_t failAt = 0;          // the call that fails; 0 for none
    std::function<bool(const std::string& sql)> refuses = [](const std::string&) { return false; };

    data::ConnectionPtr Open(const std::string& database) {
        Step(database + ": open");
        if (!Has(database)) throw Error("nessun database " + database);
        return std::make_shared<Session>(*this, database);
    }
    bool Has(const std::string& database) const {
        return std::find(databases.begin(), databases.end(), database) != databases.end();
    }

private:
    class Session : public data::Connection {
    public:
        Session(FakeServer& server, std::string database) : server_(server), database_(std::move(database)) {
            ++server_.sessions_[database_];
        }
        ~Session() override { --server_.sessions_[database_]; }

        bool IsOpen() const override { return true; }
        std::string InitialCatalog() const override { return database_; }
        data::RecordsetPtr Open(std::string_view sql) override {
            server_.Step(database_ + ": look");
            FakeTable found = {{"name"}, {}};
            for (const std::string& name : server_.databases)
                if (sql.find("'" + name + "'") != std::string_view::npos) found.rows.push_back({name});
            return RowsOf(found);
        }
        std::int64_t Execute(std::string_view sql) override {
            // Of a statement to a database, what it does.
            const std::size_t end = database_ == "master" ? sql.size() : sql.find(' ', sql.find(' ') + 1);
            server_.Step(database_ + ": " + std::string(sql.substr(0, end)));
            if (server_.refuses(std::string(sql))) throw Error("rifiutato");
            if (database_ == "master") server_.Change(std::string(sql));
            return 1;
        }
        void BeginTransaction() override { server_.Step(database_ + ": begin"); }
        void CommitTransaction() override { server_.Step(database_ + ": commit"); }
        void RollbackTransaction() override {}

    private:
        FakeServer& server_;
        std::string database_;
    };

    void Step(std::string call) {
        calls.push_back(std::move(call));
        if (calls.size() == failAt) throw Error(kFailure);
    }
    void Change(const std::string& sql) {
        if (sql.starts_with("ALTER DATABASE ")) return;
        const std::string name = sql.substr(sql.rfind(' ') + 1);
        if (sql == "CREATE DATABASE " + name && !Has(name)) {
            databases.push_back(name);
        } else if (sql == "DROP DATABASE " + name && Has(name) && sessions_[name] == 0) {
            std::erase(databases, name);
        } else {
            throw Error("non eseguito: " + sql);
        }
    }

    std::map<std::string, int> sessions_;
};

}  // namespace vlm::test
