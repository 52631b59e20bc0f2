#include "platform/x11/pasteboard_forms.hpp"

#include "platform/x11/text_encoding.hpp"

#include <span>
#include <utility>

namespace orvel::x11 {

namespace {

SharedBytes bytesOf(const std::shared_ptr<const PasteboardContents>& contents) {
    return {contents, std::as_bytes(std::span(*contents->text))};
}

std::vector<SelectionForm> textForms(const std::shared_ptr<const PasteboardContents>& contents) {
    const SharedBytes utf8 = bytesOf(contents);
    const auto latin1 = std::make_shared<const std::string>(latin1FromUtf8(*contents->text));
    return {{"UTF8_STRING", "UTF8_STRING", utf8},
            {"text/plain;charset=utf-8", "text/plain;charset=utf-8", utf8},
            {"TEXT", "UTF8_STRING", utf8},
            {"STRING", "STRING", {latin1, std::as_bytes(std::span(*latin1))}},
            {"text/plain", "text/plain", utf8}};
}

std::vector<SelectionForm> pictureForms(const PendingPicture& picture) {
    if (!picture.isSettled())
        return {{"image/png", "image/png", {}, false}, {"image/tiff", "image/tiff", {}, false}};
    const auto forms = picture.wait(Milliseconds::zero());
    if (forms == nullptr) return {};
    return {{"image/png", "image/png", {forms, forms->png}},
            {"image/tiff", "image/tiff", {forms, forms->tiff}}};
}

}  // namespace

std::vector<SelectionForm> formsOf(const std::shared_ptr<const PasteboardContents>& contents) {
    std::vector<SelectionForm> forms;
    if (contents->picture != nullptr) forms = pictureForms(*contents->picture);
    if (contents->text) {
        for (auto& form : textForms(contents)) forms.push_back(std::move(form));
    }
    return forms;
}

}  // namespace orvel::x11
