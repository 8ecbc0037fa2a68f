#include "LocalServer.h"

#include <utility>

namespace network {

namespace {

using Files = std::map<std::string, LocalServer::File>;

void answer(SoupServer*, SoupServerMessage* message, const char* path, GHashTable*,
            gpointer served) {
    const auto& files = *static_cast<const Files*>(served);
    const auto found = files.find(path);
    if (found == files.end()) {
        soup_server_message_set_status(message, SOUP_STATUS_NOT_FOUND, nullptr);
        return;
    }
    const auto& [type, bytes] = found->second;
    soup_server_message_set_status(message, SOUP_STATUS_OK, nullptr);
    soup_server_message_set_response(message, type, SOUP_MEMORY_STATIC, bytes.data(), bytes.size());
}

}  // namespace

LocalServer::LocalServer(Files files)
    : files_(std::move(files)), server_(soup_server_new(nullptr, nullptr), &g_object_unref) {
    soup_server_add_handler(server_.get(), nullptr, answer, &files_, nullptr);
    soup_server_listen_local(server_.get(), 0, SOUP_SERVER_LISTEN_IPV4_ONLY, nullptr);
}

std::string LocalServer::url(const std::string& path) const {
    const std::unique_ptr<GSList, void (*)(GSList*)> urls(
        soup_server_get_uris(server_.get()), [](GSList* list) {
            g_slist_free_full(list, [](gpointer url) { g_uri_unref(static_cast<GUri*>(url)); });
        });
    if (!urls) {
        return {};
    }
    const int port = g_uri_get_port(static_cast<GUri*>(urls->data));
    return "http://127.0.0.1:" + std::to_string(port) + path;
}

}  // namespace network
