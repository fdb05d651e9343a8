int gen_empty_has_no_entry = 1;
