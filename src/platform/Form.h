#pragma once

#include <functional>

namespace korvenal {

/// A dialog without looks: its fields are what a person sees, its methods what a person can do.
/// A front end shows it, calls `doActivate` once and then the methods that the person chooses,
/// until `isClosed`. Forms are owned by whoever shows them, for the time of one showing.
class Form {
 public:
  Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form() = default;

  /// The first activation, after the form is on the screen. May run long and yield.
  virtual void doActivate() {}
  /// The person closes the form by its frame. The form may refuse by staying open.
  virtual void doCloseBox() { doClose(); }

  bool isClosed() const { return closed_; }
  /// Called when fields changed; set by the front end.
  std::function<void()> onRepaint;

 protected:
  void doClose() { closed_ = true; }
  void doRepaint() const {
    if (onRepaint) onRepaint();
  }

 private:
  bool closed_ = false;
};

}  // namespace korvenal
