;;; fed-mode.el --- Major mode for FED files of HLA 1.3 federations  -*- lexical-binding: t -*-

;; Version: 0.1.0
;; Package-Requires: ((emacs "27.1"))
;; Keywords: languages, tools

;;; Commentary:

;; Colours, indentation, comments and an index for FED (Federation Execution Data) files.  The program `rtifed' checks them
;; while you type: through Flymake, or as a language server through Eglot (M-x eglot), which does much more.

;;; Code:

(require 'subr-x)
(declare-function flymake-diag-region "flymake")
(declare-function flymake-make-diagnostic "flymake")

(defgroup fed nil
  "FED files of HLA 1.3 federations."
  :group 'languages)

(defcustom fed-program "rtifed"
  "The program that checks, formats and fixes FED files."
  :type 'string
  :risky t)

(defcustom fed-indent-offset 2
  "Number of columns by which a clause is indented in the one that contains it."
  :type 'natnum
  :safe #'natnump)

;;;; Words and colours

(defvar fed-mode-syntax-table
  (let ((table (make-syntax-table)))
    (dolist (character (append "!#$%&'*+,-./:<=>?@[\\]^_`{|}~" nil))
      (modify-syntax-entry character "_" table))
    (modify-syntax-entry ?\( "()" table)
    (modify-syntax-entry ?\) ")(" table)
    (modify-syntax-entry ?\; "<" table)
    (modify-syntax-entry ?\n ">" table)
    (modify-syntax-entry ?\" "." table)
    table))

;; A quoted name ends with its line, so only quotes that have a partner on the line delimit a string.
(defconst fed--syntax-propertize
  (syntax-propertize-rules ("\\(\"\\)[^\"\n]*\\(\"\\)" (1 "|") (2 "|"))))

(defconst fed--heads
  '(("fed") ("spaces") ("objects") ("interactions")
    ("class" class transportation ordering space)
    ("attribute" member transportation ordering space)
    ("parameter" member)
    ("space" space)
    ("dimension" space)
    ("federate" label label)
    ("federation" label)
    ("fedversion" label)
    ("sec_level" label))
  "The keywords, each with what the words after it mean.")

(defconst fed--faces
  '((class . font-lock-type-face)
    (member . font-lock-variable-name-face)
    (space . font-lock-function-name-face)
    (label . font-lock-string-face)
    (transportation . font-lock-constant-face)
    (ordering . font-lock-builtin-face)))

(defconst fed--delivery-words
  '((transportation "reliable" "best_effort" "rti_reliable" "rti_best_effort")
    (ordering "timestamp" "receive" "rti_time_stamp_ordering" "rti_receive_ordering")))

(defun fed--next-word ()
  "Move over comments, blanks and one word; return the bounds of the word.
Return nil before a parenthesis and at the end of the text."
  (forward-comment (buffer-size))
  (let ((start (point)))
    (cond ((eq (char-after) ?\") (re-search-forward "\"[^\"\n]*\"?") (cons start (point)))
          ((> (skip-chars-forward "^ \t\v\f\r\n();\"") 0) (cons start (point))))))

(defun fed--face-of (meaning bounds)
  "The face of the word at BOUNDS in a place with this MEANING.
Return nil if only some words have that meaning, and it is none of them."
  (let ((words (cdr (assq meaning fed--delivery-words))))
    (when (or (null words)
              (member (downcase (string-trim (buffer-substring-no-properties (car bounds) (cdr bounds)) "\"" "\"")) words))
      (cdr (assq meaning fed--faces)))))

;; Clauses are read word by word, as regular expressions cannot: comments and line ends may come between any two words.  No
;; word is reserved, so only the place of a word decides about its colour.
(defun fed--fontify-clause (limit)
  "Colour the words of the next clause that begins before LIMIT."
  (when (search-forward "(" limit t)
    (unless (nth 8 (save-excursion (syntax-ppss (1- (point)))))
      (let* ((open (point))
             (keyword (fed--next-word))
             (head (and keyword
                        (assoc-string (buffer-substring-no-properties (car keyword) (cdr keyword)) fed--heads t)))
             bounds)
        (when head
          (put-text-property (car keyword) (cdr keyword) 'face 'font-lock-keyword-face)
          (dolist (meaning (cdr head))
            (when (setq bounds (fed--next-word))
              (let ((face (fed--face-of meaning bounds)))
                (put-text-property (car bounds) (cdr bounds) 'face face)))))
        (put-text-property open (point) 'font-lock-multiline t)
        (goto-char open)))
    (set-match-data (list (1- (point)) (point)))
    t))

(defvar font-lock-beg)

(defun fed--extend-region ()
  "Extend the region to colour to the beginning of a clause that it begins in."
  (save-excursion
    (goto-char font-lock-beg)
    (when (and (re-search-backward "[()]" nil t) (eq (char-after) ?\())
      (let ((start (line-beginning-position)))
        (when (< start font-lock-beg)
          (setq font-lock-beg start))))))

;;;; Indentation and index

(defun fed-indent-line ()
  "Indent the line as `rtifed fmt' does.
It gets one step more than the line on which its enclosing clause begins."
  (let* ((state (save-excursion (syntax-ppss (line-beginning-position))))
         (open (nth 1 state))
         (closes (save-excursion (back-to-indentation) (eq (char-after) ?\))))
         (column (if open
                     (+ (save-excursion (goto-char open) (current-indentation)) (if closes 0 fed-indent-offset))
                   0)))
    (if (<= (current-column) (current-indentation))
        (indent-line-to column)
      (save-excursion (indent-line-to column)))))

(defun fed--unquoted (bounds)
  "The name at BOUNDS without quotes."
  (string-trim (buffer-substring-no-properties (car bounds) (cdr bounds)) "\"" "\""))

(defun fed-imenu-index ()
  "The index of the text: spaces, and classes by their full names."
  (let ((full-names (make-hash-table)) (section nil) (index nil))
    (save-excursion
      (goto-char (point-min))
      (while (search-forward "(" nil t)
        (let* ((open (1- (point)))
               (state (save-excursion (syntax-ppss open)))
               (keyword (and (not (nth 8 state)) (fed--next-word)))
               (word (and keyword (downcase (fed--unquoted keyword)))))
          (cond
           ((member word '("objects" "interactions"))
            (setq section (if (equal word "objects") "Object classes" "Interaction classes")))
           ((member word '("space" "class"))
            (when-let ((bounds (fed--next-word)))
              (let* ((super (gethash (nth 1 state) full-names))
                     (name (concat super (and super ".") (fed--unquoted bounds)))
                     (group (if (equal word "space") "Spaces" (or section "Classes"))))
                (puthash open name full-names)
                (push (cons name open) (alist-get group index nil nil #'equal)))))))))
    (nreverse (mapcar (lambda (group) (cons (car group) (reverse (cdr group)))) index))))

;;;; The program

(defun fed--file-name ()
  "The name of the text for the program, which looks for configurations beside it."
  (or buffer-file-name (buffer-name)))

(defun fed--rewrite (command)
  "Replace the text by what COMMAND of `fed-program' makes of it."
  (let ((output (generate-new-buffer " *rtifed*")) (errors (make-temp-file "rtifed")))
    (unwind-protect
        (let* ((coding-system-for-write buffer-file-coding-system)
               (coding-system-for-read buffer-file-coding-system)
               (status (call-process-region nil nil fed-program nil (list output errors) nil
                                            command "--stdin-name" (fed--file-name) "-"))
               (messages (with-temp-buffer (insert-file-contents errors) (string-trim (buffer-string)))))
          (if (or (not (memq status '(0 1))) (= 0 (buffer-size output)))
              (user-error "%s" (if (string-empty-p messages) "rtifed failed" messages))
            (replace-buffer-contents output 2)
            (unless (string-empty-p messages) (message "%s" messages))))
      (kill-buffer output)
      (delete-file errors))))

(defun fed-format-buffer ()
  "Format the text as `rtifed fmt' does."
  (interactive)
  (fed--rewrite "fmt"))

(defun fed-fix-buffer ()
  "Apply all safe fixes to the text, as `rtifed fix' does."
  (interactive)
  (fed--rewrite "fix"))

(defun fed-show-tree ()
  "Show the class trees of the text in a window."
  (interactive)
  (let ((text (current-buffer)) (name (fed--file-name)))
    (with-current-buffer (get-buffer-create "*FED class trees*")
      (let ((inhibit-read-only t) (output (current-buffer)))
        (erase-buffer)
        (with-current-buffer text
          (call-process-region nil nil fed-program nil output nil "tree" "--stdin-name" name "-")))
      (goto-char (point-min))
      (special-mode)
      (display-buffer (current-buffer)))))

(defvar-local fed--check nil "The running check of this buffer.")

(defun fed--diagnostic (source line column severity text)
  "A diagnostic in SOURCE at LINE and the byte COLUMN, both from 1."
  (let ((bounds (with-current-buffer source
                  (save-restriction
                    (widen)
                    (save-excursion
                      (goto-char (point-min))
                      (forward-line (1- line))
                      (let* ((place (byte-to-position (+ (position-bytes (point)) (1- column))))
                             (in-line (- (min (or place (point-max)) (line-end-position)) (point))))
                        (flymake-diag-region source line (1+ in-line))))))))
    (flymake-make-diagnostic source (car bounds) (cdr bounds) (if (equal severity "error") :error :warning) text)))

(defun fed-flymake (report &rest _)
  "A Flymake backend: pass what `rtifed check' finds in the text to REPORT."
  (unless (executable-find fed-program)
    (error "There is no program \"%s\"; customize `fed-program'" fed-program))
  (when (process-live-p fed--check)
    (kill-process fed--check))
  (let ((source (current-buffer)) (coding-system-for-write 'utf-8-unix) (coding-system-for-read 'utf-8-unix))
    (save-restriction
      (widen)
      (setq fed--check
            (make-process
             :name "rtifed-check" :noquery t :connection-type 'pipe
             :buffer (generate-new-buffer " *rtifed check*")
             :command (list fed-program "check" "--format" "concise" "--stdin-name" (fed--file-name) "-")
             :sentinel (lambda (process _event) (fed--checked process source report))))
      (process-send-region fed--check (point-min) (point-max))
      (process-send-eof fed--check))))

(defun fed--checked (process source report)
  "Pass the findings of PROCESS in the buffer SOURCE to REPORT.
Do nothing if a later check has begun."
  (when (memq (process-status process) '(exit signal))
    (unwind-protect
        (when (and (buffer-live-p source) (eq process (buffer-local-value 'fed--check source)))
          (with-current-buffer (process-buffer process)
            (goto-char (point-min))
            (let (found)
              (while (re-search-forward ":\\([0-9]+\\):\\([0-9]+\\): \\(error\\|warning\\): \\(.*\\)$" nil t)
                (push (fed--diagnostic source (string-to-number (match-string 1)) (string-to-number (match-string 2))
                                       (match-string 3) (match-string 4))
                      found))
              (funcall report (nreverse found)))))
      (kill-buffer (process-buffer process)))))

(defun fed--server (&rest _)
  "The command of the language server."
  (list fed-program "lsp"))

(defvar eglot-server-programs)
(with-eval-after-load 'eglot
  (add-to-list 'eglot-server-programs '(fed-mode . fed--server)))

;;;; The mode

;;;###autoload
(define-derived-mode fed-mode prog-mode "FED"
  "Major mode for FED files of HLA 1.3 federations."
  (setq-local comment-start ";; ")
  (setq-local comment-start-skip ";+\\s-*")
  (setq-local comment-column 60)
  (setq-local indent-tabs-mode nil)
  (setq-local indent-line-function #'fed-indent-line)
  (setq-local electric-indent-chars (cons ?\) electric-indent-chars))
  (setq-local syntax-propertize-function fed--syntax-propertize)
  (setq-local parse-sexp-lookup-properties t)
  (setq-local font-lock-defaults '(((fed--fontify-clause (0 nil)))))
  (setq-local font-lock-multiline t)
  (add-hook 'font-lock-extend-region-functions #'fed--extend-region nil t)
  (when buffer-file-name
    (setq-local compile-command
                (concat fed-program " check --color never --format concise "
                        (shell-quote-argument (file-name-nondirectory buffer-file-name)))))
  (setq-local imenu-create-index-function #'fed-imenu-index)
  (add-hook 'flymake-diagnostic-functions #'fed-flymake nil t))

;;;###autoload
(add-to-list 'auto-mode-alist '("\\.fed\\'" . fed-mode))

(provide 'fed-mode)
;;; fed-mode.el ends here
