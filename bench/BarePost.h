#pragma once

#include <string>

#include <curl/curl.h>

namespace bench {

/// The peer of whatever posts: libcurl with a kept handle, with what a careful user of it sets. What all exchanges
/// share is set once, address and body each time.
class BarePost {
public:
    BarePost() : easy_(curl_easy_init())
    {
        AddField("Content-Type: application/json");
        AddField("Expect:");
        curl_easy_setopt(easy_, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy_, CURLOPT_PROXY, "");
        curl_easy_setopt(easy_, CURLOPT_TIMEOUT_MS, 40000L);
        curl_easy_setopt(easy_, CURLOPT_POST, 1L);
        curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, &BarePost::Take);
        curl_easy_setopt(easy_, CURLOPT_WRITEDATA, &answer_);
    }
    ~BarePost()
    {
        curl_easy_cleanup(easy_);
        curl_slist_free_all(fields_);
    }
    BarePost(const BarePost&) = delete;
    BarePost& operator=(const BarePost&) = delete;

    void AddField(const char* field)
    {
        fields_ = curl_slist_append(fields_, field);
        curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, fields_);
    }

    /// False when there was no answer, or an empty one.
    bool Run(const std::string& url, const std::string& body)
    {
        curl_easy_setopt(easy_, CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDS, body.data());
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        answer_.clear();
        long status = 0;
        return curl_easy_perform(easy_) == CURLE_OK &&
               curl_easy_getinfo(easy_, CURLINFO_RESPONSE_CODE, &status) == CURLE_OK && status == 200 &&
               !answer_.empty();
    }

    const std::string& Answer() const { return answer_; }

private:
    static std::size_t Take(char* data, std::size_t size, std::size_t count, void* answer)
    {
        static_cast<std::string*>(answer)->append(data, size * count);
        return size * count;
    }

    CURL* const easy_;
    curl_slist* fields_ = nullptr;
    std::string answer_;
};

} // namespace bench
