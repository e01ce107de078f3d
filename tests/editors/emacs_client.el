;; Works on a file with Eglot, as its user would, and records what Emacs then has: as nvim_client.lua does with Neovim.
;; Usage: emacs -Q -batch -L editors/emacs -L FOLDER-OF-EGLOT... -l THIS --eval '(client-session FOLDER)'
;; FOLDER has the text as 0.fed, and gets the log and the texts after each step.
(require 'cl-lib)
(require 'fed-mode)
(require 'eglot)
(require 'flymake)
(require 'xref)

(defvar client-log nil)

(defun client-note (&rest words)
  (push (mapconcat (lambda (word) (format "%s" word)) words " ") client-log))

(defun client-wait (what condition)
  "Wait until CONDITION returns non-nil; fail if WHAT takes too long."
  (with-timeout (20 (error "no %s within 20 seconds" what))
    (while (not (funcall condition))
      (accept-process-output nil 0.02))))

(defun client-keep (folder step)
  (let ((coding-system-for-write 'utf-8-unix))
    (write-region nil nil (format "%s/%d.fed" folder step) nil 'silent)))

(defun client-go-to (text)
  (goto-char (point-min))
  (search-forward text)
  (goto-char (match-beginning 0)))

(defun client-place ()
  (format "%d:%d" (line-number-at-pos) (1+ (- (point) (line-beginning-position)))))

(defun client-diagnostic (found)
  (let ((end (flymake-diagnostic-end found)))
    (save-excursion
      (goto-char (flymake-diagnostic-beg found))
      (format "%s-%d: %s: %s" (client-place) (1+ (- end (line-beginning-position)))
              (pcase (flymake-diagnostic-type found)
                ((or :error 'eglot-error) "error") ((or :warning 'eglot-warning) "warning") (_ "note"))
              (car (split-string (flymake-diagnostic-text found) "\n"))))))

(defun client-fix ()
  "Choose the first action at point."
  (let ((last-nonmenu-event t))
    (cl-letf (((symbol-function 'completing-read)
               (lambda (_prompt items &rest _)
                 (client-note "action" (caar items))
                 (caar items))))
      (eglot-code-actions (point) (point) nil t))))

(defun client-steps (folder)
  (setq eglot-sync-connect 20 eglot-autoshutdown t)
  (find-file (concat folder "/0.fed"))
  (apply #'eglot--connect (eglot--guess-contact))
  (flymake-mode 1)
  (flymake-start)
  (client-wait "diagnostics" #'flymake-diagnostics)
  (dolist (found (flymake-diagnostics))
    (client-note "diagnostic" (client-diagnostic found)))

  (client-go-to "time_stamp")
  (client-fix)
  (eglot--signal-textDocument/didChange)
  (client-wait "fix" (lambda () (null (flymake-diagnostics))))
  (client-keep folder 1)

  (client-go-to "ApproachArea)  ;; of the middle")
  (let ((from (client-place)))
    (xref-find-definitions (xref-backend-identifier-at-point 'eglot))
    (client-note "definition" from "->" (client-place)))

  (eglot-rename "Roads")
  (client-keep folder 2)

  (eglot-format-buffer)
  (client-keep folder 3)

  (client-go-to "Tanker")
  (let ((hover (jsonrpc-request (eglot--current-server-or-lose) :textDocument/hover (eglot--TextDocumentPositionParams))))
    (client-note "hover" (car (split-string (plist-get (plist-get hover :contents) :value) "\n")))))

(defun client-session (folder)
  (let ((status 0))
    (condition-case problem
        (client-steps folder)
      (error
       (client-note "failed:" (error-message-string problem))
       (setq status 1)))
    (let ((coding-system-for-write 'utf-8-unix))
      (write-region (mapconcat #'identity (reverse client-log) "\n") nil (concat folder "/log") nil 'silent))
    (kill-emacs status)))
