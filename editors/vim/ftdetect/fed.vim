autocmd BufNewFile,BufRead *.fed set filetype=fed
