#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Corvel {

using HeaderList = std::vector<std::pair<std::string, std::string>>;

struct HttpRequest {
    std::string method; ///< any verb; empty means "GET"
    std::string url;
    HeaderList headers;
    std::string body;            ///< bytes
    std::string content_type;    ///< empty for none
    std::int64_t max_answer = 0; ///< bytes of the answer's body that are taken; 0 for any number
};

/// An HTTP error that has a status is no `error`: readers look at `status` and `body`.
struct HttpResponse {
    std::int32_t status = 0;  ///< 0 if no response came
    std::string body;         ///< bytes
    std::string error;        ///< words, only when there is no status
    std::string broken_off{}; ///< why the body is not whole, behind a status; empty if it is
};

struct UploadResult {
    bool cancelled = false; ///< the user closed the dialog without a choice
    std::int32_t status = 0;
    std::string body;
    std::string error;
};

/// What a file dialog asks for.
struct PickRequest {
    std::string mode; ///< "dir", "save", or anything else for an existing file
    std::string title;
    std::string filter;    ///< "Name (*.a *.b);;Name (*)"; empty for none
    std::string directory; ///< start folder; empty for the default
    bool show_hidden = false;
};

} // namespace Corvel
