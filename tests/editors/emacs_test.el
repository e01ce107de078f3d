;; Tests of fed-mode.  Usage: emacs -Q -batch -L editors/emacs -l ert -l THIS -f ert-run-tests-batch-and-exit
;; in the folder of the repository, with rtifed in $PATH.
(require 'ert)
(require 'fed-mode)
(require 'flymake)
(require 'imenu)

(defmacro fed-test-with (text &rest body)
  "Do BODY in a buffer in `fed-mode' with TEXT."
  (declare (indent 1))
  `(with-temp-buffer
     (insert ,text)
     (fed-mode)
     (goto-char (point-min))
     ,@body))

(defun fed-test-formatted (file)
  (with-temp-buffer
    (call-process "rtifed" nil t nil "fmt" file)
    (buffer-string)))

(ert-deftest fed-indentation-is-that-of-fmt ()
  (let ((formatted (fed-test-formatted "examples/harbour.fed")))
    (fed-test-with (replace-regexp-in-string "^ +" "" formatted)
      (let ((inhibit-message t))
        (indent-region (point-min) (point-max)))
      (should (equal (buffer-string) formatted)))))

(ert-deftest fed-quotes-end-with-their-line ()
  (fed-test-with "(FED (class \"a (b\" ;; (\n(class \"unclosed\n(class c))"
    (search-forward "c))")
    (should (= 3 (car (syntax-ppss (1- (point))))))
    (should-not (nth 8 (syntax-ppss)))))

(ert-deftest fed-comments ()
  (fed-test-with "(spaces)\n"
    (comment-region (point-min) (point-max))
    (should (equal (buffer-string) ";; (spaces)\n"))
    (uncomment-region (point-min) (point-max))
    (should (equal (buffer-string) "(spaces)\n"))))

(ert-deftest fed-colours-follow-edits-on-other-lines ()
  (fed-test-with "(attribute x\n  reliable\n  receive)"
    (font-lock-ensure)
    (goto-char (point-min))
    (search-forward "attribute")
    (insert " y")
    (font-lock-ensure)
    (search-forward "rel")
    (should-not (get-text-property (point) 'face))))

(ert-deftest fed-index-has-full-names ()
  (fed-test-with "(FED (spaces (space S)) (objects (class \"A B\" (class C) (attribute x reliable receive)) (class D))
  (interactions ;; (class no)
    (class R reliable receive (class C reliable receive))))"
    (should (equal (mapcar (lambda (group) (cons (car group) (mapcar #'car (cdr group)))) (fed-imenu-index))
                   '(("Spaces" "S") ("Object classes" "A B" "A B.C" "D") ("Interaction classes" "R" "R.C"))))))

(ert-deftest fed-flymake-reports-places ()
  (fed-test-with "(FED (Federation Übung) (attribut x reliable receive)\n  (FEDversion v1))"
    (let ((found 'none))
      (fed-flymake (lambda (diagnostics &rest _) (setq found diagnostics)))
      (while (eq found 'none)
        (accept-process-output nil 0.1))
      (let ((first (cl-find-if (lambda (one) (string-match "attribut" (flymake-diagnostic-text one))) found)))
        (should first)
        (should (eq :error (flymake-diagnostic-type first)))
        (should (equal "attribut" (buffer-substring (flymake-diagnostic-beg first) (flymake-diagnostic-end first))))))))

(ert-deftest fed-format-and-fix-rewrite-the-text ()
  (fed-test-with "(fed (federation a)\n(fedversion v)\n\n\n)"
    (fed-format-buffer)
    (should (equal (buffer-string) "(FED\n  (Federation a)\n  (FEDversion v)\n)\n")))
  (let ((good (fed-test-formatted "examples/minimal.fed")))
    (fed-test-with (string-replace "Delete reliable timestamp" "Delete reliable time_stamp" good)
      (fed-fix-buffer)
      (should (equal (buffer-string) good))))
  (fed-test-with "(FED (Federation a)"
    (should-error (fed-format-buffer) :type 'user-error)
    (should (equal (buffer-string) "(FED (Federation a)"))))

(ert-deftest fed-compile-finds-places ()
  (let ((folder (make-temp-file "fed" t)))
    (unwind-protect
        (with-current-buffer (find-file-noselect (expand-file-name "a b.fed" folder))
          (insert "(FED (Federation a))")
          (save-buffer)
          (let ((buffer (compile compile-command)))
            (while (process-live-p (get-buffer-process buffer))
              (accept-process-output nil 0.05))
            (with-current-buffer buffer
              (compilation--ensure-parse (point-max))
              (goto-char (point-min))
              (compilation-next-error 1)
              (should (string-match-p "^a b.fed:1:[0-9]+: error" (thing-at-point (quote line)))))))
      (delete-directory folder t))))
